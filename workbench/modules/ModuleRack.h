#pragma once

#include "modules/ModuleSettings.h"
#include "modules/simulation/SimulationClock.h"

#include "host/CommandHandlerInterface.h"
#include "host/KAROModuleInterface.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <optional>

class PluginHandler;
struct ModuleResult;

/**
 * The modules of the workbench, plugged in or not, and the clock that the simulated ones share.
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
     * Adds a place for \a settings, with its module plugged in or not; \a seed fixes the noise of a simulated one.
     * \return an empty text, or one line that says why it cannot be made or that its key is taken; nothing is added then
     */
    QString add(const ModuleSettings &settings, quint32 seed = 1, bool pluggedIn = true);

    /// Takes the module at place \a index out and forgets the place; those behind it move up.
    void remove(int index);

    /**
     * Puts another module into place \a index, plugged in; the key may change as well.
     * \return as of add(); the old module is as before then
     */
    QString replace(int index, const ModuleSettings &settings);

    int count() const;

    /// What is at place \a index, from 0 to below count(), as it is set now.
    const ModuleSettings &settings(int index) const;
    /// The settings of a simulated module; null for a module of another family.
    const SimulationSettings *simulation(int index) const;
    /// The settings of a recording; null for a module of another family.
    const RecordingSettings *recording(int index) const;
    /// The settings of a device; null for a module of another family.
    const DeviceSettings *device(int index) const;

    bool isPluggedIn(int index) const;
    /// The module at place \a index; null while it is taken out. Owned by the registry.
    KAROModuleInterface *module(int index) const;
    /// The same, as one of a family; null for one of another family.
    template<typename Module> Module *moduleAs(int index) const
    {
        return qobject_cast<Module *>(module(index));
    }

    /// Taken out, the module is destroyed. A module that cannot be made again stays out: see failed().
    void setPluggedIn(int index, bool pluggedIn);

    // Set for the place, be its module plugged in or not; without effect for modules that are not simulated.
    void setMoving(int index, bool moving);
    void setSilent(int index, bool silent);
    void setAnswerTime(int index, int ms); ///< See SimulatedModule::setAnswerTime().

    /// How a recording is played, be it plugged in or not; without effect for modules of other families. Which file it
    /// is and what it is beside stay: replace() changes those.
    void setPlayback(int index, const RecordingSettings &settings);

    /// What the channel of the module at place \a index has done; none while the module is taken out.
    std::optional<CommandHandlerInterface::Statistics> statistics(int index) const;
    /// Requests that got an answer since the start, of the modules that are plugged in.
    quint64 answeredRequests() const;
    /// Requests that got no answer, and calls that were turned away in a rest, of the modules that are plugged in.
    quint64 missedAnswers() const;
    qint64 simulatedMs() const;

signals:
    /// Something about place \a index is no longer what it was; also when it is new.
    void changed(int index);
    /// The module of place \a index could not be plugged in; \a reason is one line.
    void failed(int index, const QString &reason);
    /// Another module is in place \a index.
    void replaced(int index);
    /// Place \a index is no more, and those behind it have moved up.
    void removed(int index);

private:
    struct Place
    {
        ModuleSettings settings;
        quint32 seed = 0;
        QPointer<KAROModuleInterface> module; // owned by the registry; null while taken out
    };

    bool isTaken(const QString &key) const;
    static QString takenText(const QString &key);
    QString plugIn(Place &place);
    QString plugIn(Place &place, ModuleResult made);
    /// Sets \a member of the settings of a simulated module; whether that changed anything.
    template<typename Value> bool changeSimulation(int index, Value SimulationSettings::*member, const Value &value);

    PluginHandler *const m_handler; // not owned
    SimulationClock m_clock;
    QTimer m_catchUpTimer; // runs while the wall clock drives
    QList<Place> m_places;
};
