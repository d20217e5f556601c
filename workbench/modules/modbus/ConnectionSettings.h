#pragma once

#include <QCoreApplication>
#include <QString>
#include <QVector>

/**
 * Where a Modbus device is reached: the line, which several devices may share, and the device's unit number on it.
 *
 * A plain value.
 */
struct ConnectionSettings
{
    Q_DECLARE_TR_FUNCTIONS(ConnectionSettings)

public:
    enum class Medium
    {
        Tcp, ///< Modbus TCP
        Rtu  ///< Modbus RTU on a serial port, 8 data bits
    };
    enum class Parity
    {
        None,
        Even,
        Odd
    };

    static constexpr int maximumPort = 65535;
    static constexpr int maximumSerialUnit = 247; ///< the numbers above are reserved
    static constexpr int maximumTcpUnit = 255;    ///< the device at the other end, not one behind it

    Medium medium = Medium::Tcp;
    int unit = 1; ///< 1 to 247; over TCP also 0 and 255

    QString host; ///< name or address; of TCP
    quint16 port = 502;

    QString serialPort; ///< path of the device file; of RTU
    int baud = 19200;   ///< one of standardBauds()
    Parity parity = Parity::Even;
    int stopBits = 1; ///< 1 or 2

    static const QVector<int> &standardBauds();

    /// Why nothing can be reached with these settings, one line; empty when they can be tried.
    QString problem() const;

    /// "drive.local:502" or "/dev/ttyUSB0 19200 8E1": all but the unit.
    QString lineName() const;

    /// Whether both are on one line. Settings of one serial port that differ otherwise are not.
    bool isSameLine(const ConnectionSettings &other) const;

    /// Bits on the line for each byte: start, data, parity and stop bits. Of RTU.
    int bitsPerByte() const;

    friend bool operator==(const ConnectionSettings &left, const ConnectionSettings &right)
    {
        return left.isSameLine(right) && left.unit == right.unit;
    }
    friend bool operator!=(const ConnectionSettings &left, const ConnectionSettings &right)
    {
        return !(left == right);
    }
};
