#pragma once

#include <QCoreApplication>
#include <QString>

#include <string>

/**
 * What keeps a device from answering, as the thread of its connection has found it.
 *
 * A plain value. words() belongs to the GUI thread.
 */
struct ConnectionTrouble
{
    Q_DECLARE_TR_FUNCTIONS(ConnectionTrouble)

public:
    enum class Kind
    {
        None,
        Settings,         ///< nothing can be reached with them; detail has the words
        Connecting,       ///< not tried yet
        UnknownHost,      ///< no address for the name; detail has the resolver's words
        Refused,          ///< the host has no server at the port
        NoRoute,          ///< no way to the host
        Forbidden,        ///< by a rule of this computer
        ConnectTimeout,   ///< the host does not react
        NoPort,           ///< there is no such device file
        NoPermission,     ///< for the device file; detail is the group that has it, if any
        PortInUse,        ///< by another program, or by a device with other settings
        NotSerial,        ///< the file is no serial port
        SystemError,      ///< number is errno
        Closed,           ///< the other side ended the connection, or the port was pulled out
        NoAnswer,         ///< in time
        NoAnswerOnLine,   ///< the same, over a serial line
        WrongUnit,        ///< number is the unit that answered
        WrongTransaction, ///< answers belong to no request
        WrongLength,      ///< an answer has more or less than was asked for
        Garbage,          ///< what comes over a serial line is no Modbus, or damaged
        NotModbus,        ///< the same, over TCP
        Exception         ///< number is the exception code of the device
    };

    Kind kind = Kind::None;
    int number = 0;
    std::string detail;

    /// One line for people; empty without trouble.
    QString words() const;

    /// "illegal data address" and so on; the bare number for a code that has no name.
    static QString exceptionName(int code);

    friend bool operator==(const ConnectionTrouble &left, const ConnectionTrouble &right)
    {
        return left.kind == right.kind && left.number == right.number && left.detail == right.detail;
    }
};
