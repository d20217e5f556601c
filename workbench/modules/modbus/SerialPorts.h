#pragma once

#include <QString>
#include <QVector>

/// A serial port of the computer.
struct SerialPort
{
    QString path; ///< that stays the same when it is plugged in again, if there is one
    QString text; ///< for a list: "ttyUSB0, usb-..."
};

/**
 * The serial ports that are there: those with a name below /dev/serial/by-id under that name, other USB ports, and
 * built-in ones that have hardware. No port is opened.
 *
 * \param root of the file system, "/" unless it is a test's
 */
QVector<SerialPort> serialPorts(const QString &root = QStringLiteral("/"));
