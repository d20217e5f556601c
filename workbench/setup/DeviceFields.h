#pragma once

#include "setup/ModuleFields.h"

#include <QList>

/// The fields of devices over Modbus TCP: "host", "port", "unit" and "map", the path of the register map.
ModuleFields tcpDeviceFields();

/// The fields of devices over Modbus RTU: "serialPort", "baud", "parity", "stopBits", "unit" and "map".
ModuleFields rtuDeviceFields();

/// Makes relative paths of register maps absolute: they count from \a folder, that of the set-up.
void resolveMapFiles(QList<ModuleSettings> &modules, const QString &folder);
