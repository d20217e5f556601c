#pragma once

#include "modules/simulation/MotionProgram.h"

#include <QMap>
#include <QString>

/// What a simulated module is, and how it is set.
struct SimulationSettings
{
    QString kind;                          ///< name of one of simulatedModuleKinds()
    QMap<int, MotionProgram> motions = {}; ///< by axis; an axis without one keeps its kind's own motion
    bool isMoving = true;                  ///< off: the axes brake and stay
    bool isSilent = false;                 ///< it answers no request
    int answerTimeMs = 0;                  ///< real time that each answer takes, ms, 0 or more
};
