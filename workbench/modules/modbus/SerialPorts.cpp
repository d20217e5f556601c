#include "modules/modbus/SerialPorts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

namespace
{

/// The kernel lists built-in ports that a board might have; one without hardware is of type 0.
bool hasHardware(const QDir &root, const QString &name)
{
    QFile type(root.filePath(QStringLiteral("sys/class/tty/%1/type").arg(name)));
    if (!type.open(QIODevice::ReadOnly)) {
        return false;
    }
    return type.readAll().trimmed() != "0";
}

QStringList entries(const QDir &folder, const QStringList &patterns)
{
    return folder.entryList(patterns, QDir::System | QDir::Files | QDir::NoDotAndDotDot, QDir::Name);
}

} // namespace

QVector<SerialPort> serialPorts(const QString &root)
{
    const QDir rootFolder(root);
    const QDir devices(rootFolder.filePath(QStringLiteral("dev")));
    const QDir names(devices.filePath(QStringLiteral("serial/by-id")));
    QVector<SerialPort> ports;
    QSet<QString> named;
    const QStringList ids = entries(names, {});
    for (const QString &id : ids) {
        const QString device = QFileInfo(names.filePath(id)).canonicalFilePath().section(QLatin1Char('/'), -1);
        if (!device.isEmpty()) {
            named.insert(device);
            ports.append({names.filePath(id), QStringLiteral("%1, %2").arg(device, id)});
        }
    }
    const QStringList plain = entries(devices, {QStringLiteral("ttyUSB*"), QStringLiteral("ttyACM*")}) +
                              entries(devices, {QStringLiteral("ttyS*"), QStringLiteral("ttyAMA*")});
    for (const QString &device : plain) {
        const bool isBuiltIn = device.startsWith(QLatin1String("ttyS")) || device.startsWith(QLatin1String("ttyAMA"));
        if (!named.contains(device) && (!isBuiltIn || hasHardware(rootFolder, device))) {
            ports.append({devices.filePath(device), device});
        }
    }
    return ports;
}
