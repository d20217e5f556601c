#pragma once

#include "modules/modbus/ConnectionSettings.h"

#include <QString>

/// What a device is, and where it is reached.
struct DeviceSettings
{
    ConnectionSettings connection;
    QString mapFile; ///< path of its register map
};
