#include "modules/modbus/ConnectionSettings.h"

#include <QFileInfo>

namespace
{

QChar parityLetter(ConnectionSettings::Parity parity)
{
    switch (parity) {
    case ConnectionSettings::Parity::None:
        return QLatin1Char('N');
    case ConnectionSettings::Parity::Even:
        return QLatin1Char('E');
    case ConnectionSettings::Parity::Odd:
        break;
    }
    return QLatin1Char('O');
}

/// The port itself when \a path is a link to it, as those below /dev/serial/by-id are.
QString portFile(const QString &path)
{
    const QString target = QFileInfo(path).canonicalFilePath();
    return target.isEmpty() ? path : target;
}

} // namespace

const QVector<int> &ConnectionSettings::standardBauds()
{
    // The protocol library silently takes 9600 for any other.
    static const QVector<int> bauds{1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200, 230400, 460800, 921600};
    return bauds;
}

QString ConnectionSettings::problem() const
{
    if (medium == Medium::Tcp) {
        if (host.trimmed().isEmpty()) {
            return tr("The host is missing.");
        }
        if (port == 0) {
            return tr("The port has to be 1 to 65535.");
        }
        if (unit != maximumTcpUnit && (unit < 0 || unit > maximumSerialUnit)) {
            return tr("The unit has to be 0 to %1, or %2.").arg(maximumSerialUnit).arg(maximumTcpUnit);
        }
        return {};
    }
    if (serialPort.trimmed().isEmpty()) {
        return tr("The serial port is missing.");
    }
    if (!standardBauds().contains(baud)) {
        return tr("%1 baud is none of the usual rates.").arg(baud);
    }
    if (stopBits != 1 && stopBits != 2) {
        return tr("There are 1 or 2 stop bits.");
    }
    if (unit < 1 || unit > maximumSerialUnit) { // 0 is for all devices at once
        return tr("The unit has to be 1 to %1.").arg(maximumSerialUnit);
    }
    return {};
}

QString ConnectionSettings::lineName() const
{
    if (medium == Medium::Tcp) {
        const bool isIpv6 = host.contains(QLatin1Char(':'));
        return (isIpv6 ? QStringLiteral("[%1]:%2") : QStringLiteral("%1:%2")).arg(host).arg(port);
    }
    return QStringLiteral("%1 %2 8%3%4").arg(serialPort).arg(baud).arg(parityLetter(parity)).arg(stopBits);
}

bool ConnectionSettings::isSameLine(const ConnectionSettings &other) const
{
    if (medium != other.medium) {
        return false;
    }
    if (medium == Medium::Tcp) {
        return port == other.port && host.compare(other.host, Qt::CaseInsensitive) == 0;
    }
    return baud == other.baud && parity == other.parity && stopBits == other.stopBits &&
           portFile(serialPort) == portFile(other.serialPort);
}

int ConnectionSettings::bitsPerByte() const
{
    constexpr int startAndDataBits = 9;
    return startAndDataBits + (parity == Parity::None ? 0 : 1) + stopBits;
}
