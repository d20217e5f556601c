#include "modules/modbus/DeviceText.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QRegularExpression>

namespace
{

constexpr int maximumNameCharacters = 40;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(DeviceText)
};

ConnectionSettings::Parity parityOf(const QString &word)
{
    using Parity = ConnectionSettings::Parity;
    return word == QLatin1String("none") ? Parity::None : word == QLatin1String("odd") ? Parity::Odd : Parity::Even;
}

bool readTcp(const QString &text, DeviceSettings &device)
{
    static const QRegularExpression pattern(
        QStringLiteral("^modbus-tcp:(?:\\[([^\\]]+)\\]|([^:/\\[\\]]+)):([0-9]{1,5})/([0-9]{1,3}),(.+)$"));
    const QRegularExpressionMatch match = pattern.match(text);
    const int port = match.captured(3).toInt();
    ConnectionSettings &connection = device.connection;
    connection.medium = ConnectionSettings::Medium::Tcp;
    connection.host = match.captured(1) + match.captured(2);
    connection.port = quint16(port > 0xFFFF ? 0 : port);
    connection.unit = match.captured(4).toInt();
    device.mapFile = match.captured(5);
    return match.hasMatch();
}

bool readRtu(const QString &text, DeviceSettings &device)
{
    // The path may have colons and slashes of its own: it ends at the first colon from where all the rest fits.
    static const QRegularExpression pattern(
        QStringLiteral("^modbus-rtu:(.+?):([0-9]{1,7})(?::(none|even|odd)(?::([0-9]))?)?/([0-9]{1,3}),(.+)$"));
    const QRegularExpressionMatch match = pattern.match(text);
    ConnectionSettings &connection = device.connection;
    connection.medium = ConnectionSettings::Medium::Rtu;
    connection.serialPort = match.captured(1);
    connection.baud = match.captured(2).toInt();
    connection.parity = parityOf(match.captured(3));
    connection.stopBits = match.captured(4).isEmpty() ? 1 : match.captured(4).toInt();
    connection.unit = match.captured(5).toInt();
    device.mapFile = match.captured(6);
    return match.hasMatch();
}

} // namespace

DeviceTextResult deviceFromText(const QString &text)
{
    DeviceTextResult result;
    if (!readTcp(text, result.device) && !readRtu(text, result.device)) {
        result.error = Text::tr("expected modbus-tcp:HOST:PORT/UNIT,MAP or "
                                "modbus-rtu:PORT:BAUD[:none|even|odd[:STOPBITS]]/UNIT,MAP, found \"%1\"")
                           .arg(text);
        return result;
    }
    const QString problem = result.device.connection.problem();
    if (!problem.isEmpty()) {
        result.error = QStringLiteral("\"%1\": %2").arg(text, problem);
    }
    return result;
}

QString deviceKey(int number, const DeviceSettings &device)
{
    const QString name = QFileInfo(device.mapFile).completeBaseName().simplified().left(maximumNameCharacters);
    return QStringLiteral("DEV%1/%2").arg(number).arg(name);
}
