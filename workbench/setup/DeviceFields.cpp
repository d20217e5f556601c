#include "setup/DeviceFields.h"

#include "reading/FieldReader.h"

#include <QCoreApplication>
#include <QDir>
#include <QMap>

#include <limits>

namespace
{

using Parity = ConnectionSettings::Parity;

const QString kindField = QStringLiteral("kind");
const QString tcpKind = QStringLiteral("modbus-tcp");
const QString rtuKind = QStringLiteral("modbus-rtu");
const QString hostField = QStringLiteral("host");
const QString portField = QStringLiteral("port");
const QString serialPortField = QStringLiteral("serialPort");
const QString baudField = QStringLiteral("baud");
const QString parityField = QStringLiteral("parity");
const QString stopBitsField = QStringLiteral("stopBits");
const QString unitField = QStringLiteral("unit");
const QString mapField = QStringLiteral("map");

struct DeviceFieldsText
{
    Q_DECLARE_TR_FUNCTIONS(DeviceFields)
};

const QMap<QString, Parity> &parities()
{
    static const QMap<QString, Parity> words = {{QStringLiteral("none"), Parity::None},
                                                {QStringLiteral("even"), Parity::Even},
                                                {QStringLiteral("odd"), Parity::Odd}};
    return words;
}

decltype(ModuleSettings::family) readTcp(FieldReader &reader, const QJsonObject &object, const QString &place)
{
    DeviceSettings device;
    ConnectionSettings &connection = device.connection;
    connection.medium = ConnectionSettings::Medium::Tcp;
    connection.host = reader.text(object, place, hostField);
    connection.port =
        quint16(reader.integer(object, place, portField, 1, ConnectionSettings::maximumPort, connection.port));
    connection.unit =
        int(reader.integer(object, place, unitField, 0, ConnectionSettings::maximumTcpUnit, connection.unit));
    if (connection.unit > ConnectionSettings::maximumSerialUnit &&
        connection.unit != ConnectionSettings::maximumTcpUnit) {
        reader.addError(place, unitField,
                        DeviceFieldsText::tr("0 to %1, or %2")
                            .arg(ConnectionSettings::maximumSerialUnit)
                            .arg(ConnectionSettings::maximumTcpUnit));
    }
    device.mapFile = reader.text(object, place, mapField);
    return device;
}

decltype(ModuleSettings::family) readRtu(FieldReader &reader, const QJsonObject &object, const QString &place)
{
    DeviceSettings device;
    ConnectionSettings &connection = device.connection;
    connection.medium = ConnectionSettings::Medium::Rtu;
    connection.serialPort = reader.text(object, place, serialPortField);
    using Limits = std::numeric_limits<int>;
    connection.baud = int(reader.integer(object, place, baudField, 0, Limits::max(), connection.baud));
    if (!ConnectionSettings::standardBauds().contains(connection.baud)) {
        QStringList bauds;
        for (const int baud : ConnectionSettings::standardBauds()) {
            bauds.append(QString::number(baud));
        }
        reader.addError(place, baudField, DeviceFieldsText::tr("one of %1").arg(bauds.join(QStringLiteral(", "))));
    }
    connection.parity = parities().value(
        reader.choice(object, place, parityField, parities().keys(), parities().key(connection.parity)));
    connection.stopBits = int(reader.integer(object, place, stopBitsField, 1, 2, connection.stopBits));
    connection.unit =
        int(reader.integer(object, place, unitField, 1, ConnectionSettings::maximumSerialUnit, connection.unit));
    device.mapFile = reader.text(object, place, mapField);
    return device;
}

/// The settings of a device at \a medium; null for any other module.
const DeviceSettings *deviceAt(const ModuleSettings &module, ConnectionSettings::Medium medium)
{
    const auto *const device = std::get_if<DeviceSettings>(&module.family);
    return device != nullptr && device->connection.medium == medium ? device : nullptr;
}

QJsonObject writeTcp(const ModuleSettings &module)
{
    const DeviceSettings *const device = deviceAt(module, ConnectionSettings::Medium::Tcp);
    if (device == nullptr) {
        return {};
    }
    return {{kindField, tcpKind},
            {hostField, device->connection.host},
            {portField, device->connection.port},
            {unitField, device->connection.unit},
            {mapField, device->mapFile}};
}

QJsonObject writeRtu(const ModuleSettings &module)
{
    const DeviceSettings *const device = deviceAt(module, ConnectionSettings::Medium::Rtu);
    if (device == nullptr) {
        return {};
    }
    return {{kindField, rtuKind},
            {serialPortField, device->connection.serialPort},
            {baudField, device->connection.baud},
            {parityField, parities().key(device->connection.parity)},
            {stopBitsField, device->connection.stopBits},
            {unitField, device->connection.unit},
            {mapField, device->mapFile}};
}

} // namespace

ModuleFields tcpDeviceFields()
{
    return {{tcpKind}, {hostField, portField, unitField, mapField}, readTcp, writeTcp};
}

ModuleFields rtuDeviceFields()
{
    return {
        {rtuKind}, {serialPortField, baudField, parityField, stopBitsField, unitField, mapField}, readRtu, writeRtu};
}

void resolveMapFiles(QList<ModuleSettings> &modules, const QString &folder)
{
    for (ModuleSettings &module : modules) {
        if (auto *const device = std::get_if<DeviceSettings>(&module.family)) {
            device->mapFile = QDir(folder).absoluteFilePath(device->mapFile);
        }
    }
}
