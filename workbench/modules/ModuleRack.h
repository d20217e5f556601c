#pragma once

#include "modules/ModuleSettings.h"
#include "modules/simulation/SimulationClock.h"

#include "host/CommandHandlerInterface.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <optional>

class PluginHandler;
class SimulatedModule;

/**
 * The simulated modules of the workbench, plugged in or not, and the clock that they share.
 *
 * A place in the rack remembers what its module is and how it was set, so that a module that is plugged in again is
 * as it was before. Takes all modules out of the registry when it dies. GUI thread.
 */
class ModuleRack : public QObject
{
    Q_OBJECT

public:
    static constexpr int catchUpIntervalMs = 50;

    /// \param handler the registry, not owned, has to outlive the rack
    ModuleRack(PluginHandler *handler, SimulationClock::Drive drive, int stepsPerExchange);
    ~ModuleRack() override;

    /**
     * Adds a place for \a module and plugs it in; \a seed fixes its noise.
     * \return false when its kind is unknown or its key taken; nothing is added then
     */
    bool add(const ModuleSettings &module, quint32 seed);

    int count() const;

    /// What is at place \a index, from 0 to below count(), as it was added.
    const ModuleSettings &description(int index) const;

    bool isPluggedIn(int index) const;
    bool isMoving(int index) const;  ///< Set for the module, be it plugged in or not.
    bool isSilent(int index) const;  ///< Set for the module, be it plugged in or not.
    int answerTime(int index) const; ///< ms; set for the module, be it plugged in or not.

    void setPluggedIn(int index, bool pluggedIn); ///< Taken out, the module is destroyed.
    void setMoving(int index, bool moving);
    void setSilent(int index, bool silent);
    void setAnswerTime(int index, int ms); ///< See SimulatedModule::setAnswerTime().

    /// What the channel of the module at place \a index has done; none while the module is taken out.
    std::optional<CommandHandlerInterface::Statistics> statistics(int index) const;
    /// Requests that got an answer since the start, of the modules that are plugged in.
    quint64 answeredRequests() const;
    /// Requests that got no answer, and calls that were turned away in a rest, of the modules that are plugged in.
    quint64 missedAnswers() const;
    qint64 simulatedMs() const;

signals:
    /// Something about place \a index is no longer what it was.
    void changed(int index);

private:
    struct Place
    {
        ModuleSettings description;
        quint32 seed = 0;
        bool isMoving = true;
        bool isSilent = false;
        int answerTimeMs = 0;
        QPointer<SimulatedModule> module; // owned by the registry; null while taken out
    };

    bool plugIn(Place &place);

    PluginHandler *const m_handler; // not owned
    SimulationClock m_clock;
    QTimer m_catchUpTimer; // runs while the wall clock drives
    QList<Place> m_places;
};
