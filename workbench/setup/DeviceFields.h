#pragma once

#include "setup/ModuleFields.h"

#include <QList>

/// The fields of devices over Modbus TCP: "host", "port", "unit" and "map", the path of the register map.
ModuleFields tcpDeviceFields();

/// The fields of devices over Modbus RTU: "serialPort", "baud", "parity", "stopBits", "unit" and "map".
ModuleFields rtuDeviceFields();

/// Makes the paths of register maps absolute that are relative to \a folder, where the set-up lies.
void resolveMapFiles(QList<ModuleSettings> &modules, const QString &folder);
