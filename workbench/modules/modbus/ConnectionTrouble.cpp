#include "modules/modbus/ConnectionTrouble.h"

#include <cstring>

QString ConnectionTrouble::words() const
{
    QString text = QString::fromStdString(detail);
    switch (kind) {
    case Kind::None:
        return {};
    case Kind::Settings:
        return text;
    case Kind::Connecting:
        return tr("Connecting…");
    case Kind::UnknownHost:
        return tr("The name of the host has no address: %1").arg(text);
    case Kind::Refused:
        return tr("The host refuses the connection: no server listens at this port.");
    case Kind::NoRoute:
        return tr("There is no route to the host.");
    case Kind::Forbidden:
        return tr("This computer does not let the connection out: is it a rule of its firewall?");
    case Kind::ConnectTimeout:
        return tr("The host does not react.");
    case Kind::NoPort:
        return tr("There is no such serial port. Is it plugged in?");
    case Kind::NoPermission:
        return text.isEmpty() ? tr("No permission for the serial port.")
                              : tr("No permission for the serial port: members of the group \"%1\" have it.").arg(text);
    case Kind::PortInUse:
        return tr("The serial port is in use, by another program or with other settings.");
    case Kind::NotSerial:
        return tr("This file is no serial port.");
    case Kind::SystemError:
        return tr("The connection failed: %1").arg(QString::fromLocal8Bit(std::strerror(number)));
    case Kind::Closed:
        return tr("The connection was closed.");
    case Kind::NoAnswer:
        return tr("No answer. Is the unit right?");
    case Kind::NoAnswerOnLine:
        return tr("No answer. Are unit, cable and rate right?");
    case Kind::WrongUnit:
        return number < 0 ? tr("Another unit answered instead.") : tr("Unit %1 answered instead.").arg(number);
    case Kind::WrongTransaction:
        return tr("The answers belong to other requests.");
    case Kind::WrongLength:
        return tr("The answers do not have the length that was asked for.");
    case Kind::Garbage:
        return tr("Garbage on the line. Do rate, parity and stop bits match?");
    case Kind::NotModbus:
        return tr("What the host sends is no Modbus.");
    case Kind::Exception:
        return tr("The device answers with exception %1: %2.").arg(number).arg(exceptionName(number));
    }
    return {};
}

QString ConnectionTrouble::exceptionName(int code)
{
    switch (code) {
    case 1:
        return tr("illegal function");
    case 2:
        return tr("illegal data address");
    case 3:
        return tr("illegal data value");
    case 4:
        return tr("device failure");
    case 5:
        return tr("acknowledge, it takes longer");
    case 6:
        return tr("device busy");
    case 7:
        return tr("negative acknowledge");
    case 8:
        return tr("memory parity error");
    case 10:
        return tr("gateway path unavailable");
    case 11:
        return tr("the gateway's target does not answer");
    default:
        return QString::number(code);
    }
}
