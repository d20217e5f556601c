#pragma once

#include "modules/simulation/MotionProgram.h"

#include <QMap>
#include <QString>

/// Which module a place of the rack holds, and how it moves.
struct ModuleSettings
{
    QString kind;                     ///< name of one of simulatedModuleKinds()
    QString key;                      ///< key in the registry, for example "SIM0/Stepper"
    QMap<int, MotionProgram> motions; ///< by axis; an axis without one keeps its kind's own motion
};
