#pragma once

#include "modules/simulation/MotionProgram.h"
#include "modules/simulation/SimulationClock.h"

#include "host/KAROModuleInterface.h"

#include <QStringList>

/**
 * A module that exists in this process only: it moves in simulated time and answers through a real command channel.
 *
 * What there is to read is told by its parameter maps and registers; whatever they list, the channel answers.
 */
class SimulatedModule : public KAROModuleInterface
{
    Q_OBJECT

public:
    using KAROModuleInterface::KAROModuleInterface;

    /// What axis \a axis does while the module moves; an axis that the module does not have is ignored.
    virtual void setMotion(int axis, const MotionProgram &program) = 0;
    virtual MotionProgram motion(int axis) const = 0;

    /// Off: the axes ramp down and stay. On from the start.
    virtual void setMoving(bool moving) = 0;
    virtual bool isMoving() const = 0;

    /// A silent module answers no request until it is made to speak again.
    virtual void setSilent(bool silent) = 0;
    virtual bool isSilent() const = 0;

    /// Real time that each answer takes, ms; 0 from the start.
    virtual void setAnswerTime(int ms) = 0;
    virtual int answerTime() const = 0;
};

/// The kinds of modules that createModule() knows: "stepper-3", "servo-1", "io-block".
QStringList simulatedModuleKinds();

/// Axes of a kind of module, which are numbered from 0; 0 for an unknown kind.
int simulatedModuleAxisCount(const QString &kind);

/// One line that tells a person what a kind of module is and what it has to show; empty for an unknown kind.
QString simulatedModuleSummary(const QString &kind);

/**
 * Makes a module that moves by \a clock (not owned, has to outlive it).
 *
 * \param key  the key for the registry, for example "SIM0/Stepper"
 * \param seed fixes all noise: the same seed and the same exchanges give the same values
 * \return null for an unknown kind; else owned by the caller
 */
SimulatedModule *createModule(const QString &kind, const QString &key, PluginHandler *handler, SimulationClock *clock,
                              quint32 seed);
