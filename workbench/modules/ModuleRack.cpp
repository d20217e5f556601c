#include "modules/ModuleRack.h"

#include "modules/ModuleFactory.h"
#include "modules/recording/RecordedModule.h"
#include "modules/simulation/SimulatedModule.h"

#include "host/PluginHandler.h"

#include <algorithm>

ModuleRack::ModuleRack(PluginHandler *handler, SimulationClock::Drive drive, int stepsPerExchange)
    : m_handler(handler), m_clock(drive, stepsPerExchange)
{
    if (drive == SimulationClock::Drive::WallClock) {
        // Motors also move while no values are read.
        connect(&m_catchUpTimer, &QTimer::timeout, this, [this] { m_clock.catchUp(); });
        m_catchUpTimer.start(catchUpIntervalMs);
    }
}

ModuleRack::~ModuleRack()
{
    for (int index = count() - 1; index >= 0; --index) {
        setPluggedIn(index, false);
    }
}

QString ModuleRack::add(const ModuleSettings &settings, quint32 seed, bool pluggedIn)
{
    Place place;
    place.settings = settings;
    place.seed = seed;
    QString problem;
    if (isTaken(settings.key)) {
        problem = takenText(settings.key);
    } else if (pluggedIn) {
        problem = plugIn(place);
    }
    if (problem.isEmpty()) {
        m_places.append(place);
        emit changed(count() - 1);
    }
    return problem;
}

void ModuleRack::remove(int index)
{
    setPluggedIn(index, false);
    m_places.removeAt(index);
    emit removed(index);
}

QString ModuleRack::replace(int index, const ModuleSettings &settings)
{
    const Place old = m_places.at(index);
    const bool wasPluggedIn = isPluggedIn(index);
    if (settings.key != old.settings.key && isTaken(settings.key)) {
        return takenText(settings.key);
    }
    Place place;
    place.settings = settings;
    place.seed = old.seed;
    // Made before the old one goes: containers keep its values when there is no new one.
    ModuleResult made = makeModule(settings, {m_handler, &m_clock, place.seed});
    if (made.module == nullptr) {
        return made.error;
    }
    if (wasPluggedIn) {
        m_handler->removeModulePlugin(old.settings.key);
    }
    QString problem = plugIn(place, std::move(made));
    m_places[index] = place;
    emit replaced(index);
    return problem;
}

int ModuleRack::count() const
{
    return m_places.size();
}

const ModuleSettings &ModuleRack::settings(int index) const
{
    return m_places.at(index).settings;
}

const SimulationSettings *ModuleRack::simulation(int index) const
{
    return std::get_if<SimulationSettings>(&m_places.at(index).settings.family);
}

const RecordingSettings *ModuleRack::recording(int index) const
{
    return std::get_if<RecordingSettings>(&m_places.at(index).settings.family);
}

const DeviceSettings *ModuleRack::device(int index) const
{
    return std::get_if<DeviceSettings>(&m_places.at(index).settings.family);
}

bool ModuleRack::isPluggedIn(int index) const
{
    return !m_places.at(index).module.isNull();
}

KAROModuleInterface *ModuleRack::module(int index) const
{
    return m_places.at(index).module;
}

void ModuleRack::setPluggedIn(int index, bool pluggedIn)
{
    if (pluggedIn == isPluggedIn(index)) {
        return;
    }
    QString problem;
    if (pluggedIn) {
        problem = plugIn(m_places[index]);
    } else {
        m_handler->removeModulePlugin(m_places.at(index).settings.key);
    }
    emit changed(index);
    if (!problem.isEmpty()) {
        emit failed(index, problem);
    }
}

template<typename Value>
bool ModuleRack::changeSimulation(int index, Value SimulationSettings::*member, const Value &value)
{
    auto *const simulation = std::get_if<SimulationSettings>(&m_places[index].settings.family);
    if (simulation == nullptr || simulation->*member == value) {
        return false;
    }
    simulation->*member = value;
    return true;
}

void ModuleRack::setMoving(int index, bool moving)
{
    if (!changeSimulation(index, &SimulationSettings::isMoving, moving)) {
        return;
    }
    if (auto *const module = moduleAs<SimulatedModule>(index)) {
        module->setMoving(moving);
    }
    emit changed(index);
}

void ModuleRack::setSilent(int index, bool silent)
{
    if (!changeSimulation(index, &SimulationSettings::isSilent, silent)) {
        return;
    }
    if (auto *const module = moduleAs<SimulatedModule>(index)) {
        module->setSilent(silent);
    }
    emit changed(index);
}

void ModuleRack::setAnswerTime(int index, int ms)
{
    if (!changeSimulation(index, &SimulationSettings::answerTimeMs, ms)) {
        return;
    }
    if (auto *const module = moduleAs<SimulatedModule>(index)) {
        module->setAnswerTime(ms);
    }
    emit changed(index);
}

void ModuleRack::setPlayback(int index, const RecordingSettings &settings)
{
    auto *const recording = std::get_if<RecordingSettings>(&m_places[index].settings.family);
    if (recording == nullptr) {
        return;
    }
    recording->isPlaying = settings.isPlaying;
    recording->isRepeated = settings.isRepeated;
    recording->speedTenths = settings.speedTenths;
    if (auto *const module = moduleAs<RecordedModule>(index)) {
        module->apply(*recording);
    }
    emit changed(index);
}

std::optional<CommandHandlerInterface::Statistics> ModuleRack::statistics(int index) const
{
    KAROModuleInterface *const plugged = module(index);
    if (plugged == nullptr) {
        return std::nullopt;
    }
    return plugged->commandHandlerInterface()->statistics();
}

quint64 ModuleRack::answeredRequests() const
{
    quint64 answered = 0;
    for (int index = 0; index < count(); ++index) {
        const auto counted = statistics(index);
        answered += counted ? counted->requests - counted->unanswered : 0;
    }
    return answered;
}

quint64 ModuleRack::missedAnswers() const
{
    quint64 missed = 0;
    for (int index = 0; index < count(); ++index) {
        const auto counted = statistics(index);
        missed += counted ? counted->unanswered + counted->rests : 0;
    }
    return missed;
}

qint64 ModuleRack::simulatedMs() const
{
    return m_clock.nowMs();
}

/// A module that is taken out keeps its key.
bool ModuleRack::isTaken(const QString &key) const
{
    return std::any_of(m_places.cbegin(), m_places.cend(),
                       [&key](const Place &place) { return place.settings.key == key; });
}

QString ModuleRack::takenText(const QString &key)
{
    return tr("%1: there is a module of this key already").arg(key);
}

QString ModuleRack::plugIn(Place &place)
{
    return plugIn(place, makeModule(place.settings, {m_handler, &m_clock, place.seed}));
}

QString ModuleRack::plugIn(Place &place, ModuleResult made)
{
    if (made.module == nullptr) {
        return made.error;
    }
    // Before it is added: a container that is notified of it may have it removed at once.
    place.module = made.module.get();
    if (!m_handler->addModulePlugin(made.module.get())) {
        return takenText(place.settings.key);
    }
    static_cast<void>(made.module.release()); // the registry owns it now
    return {};
}
