#pragma once

#include "modules/modbus/DeviceSettings.h"
#include "modules/recording/RecordingSettings.h"
#include "modules/simulation/SimulationSettings.h"

#include <QString>

#include <variant>

/// What a place of the rack holds, and how it is set: all that it takes to make the module again.
struct ModuleSettings
{
    QString key; ///< key in the registry, for example "SIM0/Stepper"
    /// The settings of the module's family, of one type per folder of modules/.
    std::variant<SimulationSettings, DeviceSettings, RecordingSettings> family;
};
