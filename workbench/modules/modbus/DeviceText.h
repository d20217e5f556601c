#pragma once

#include "modules/modbus/DeviceSettings.h"

#include <QString>

/// A device, or one line that says what is wrong with the text; \c error is empty when nothing is.
struct DeviceTextResult
{
    DeviceSettings device;
    QString error;
};

/**
 * Reads a device from the text of a command line: "modbus-tcp:HOST:PORT/UNIT,MAP", with an IPv6 address in brackets, or
 * "modbus-rtu:PORT:BAUD[:PARITY[:STOP]]/UNIT,MAP", with the parity "none", "even" or "odd".
 */
DeviceTextResult deviceFromText(const QString &text);

/// The key of the device with the number \a number, counted from 0: "DEV0/servo-drive", after its register map.
QString deviceKey(int number, const DeviceSettings &device);
