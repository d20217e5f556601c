#include "modules/ModuleRack.h"

#include "modules/simulation/ModuleKind.h"
#include "modules/simulation/SimulatedModule.h"

#include "host/PluginHandler.h"

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

bool ModuleRack::add(const ModuleSettings &module, quint32 seed)
{
    Place place;
    place.description = module;
    place.seed = seed;
    if (!plugIn(place)) {
        return false;
    }
    m_places.append(place);
    emit changed(count() - 1);
    return true;
}

int ModuleRack::count() const
{
    return m_places.size();
}

const ModuleSettings &ModuleRack::description(int index) const
{
    return m_places.at(index).description;
}

bool ModuleRack::isPluggedIn(int index) const
{
    return !m_places.at(index).module.isNull();
}

bool ModuleRack::isMoving(int index) const
{
    return m_places.at(index).isMoving;
}

bool ModuleRack::isSilent(int index) const
{
    return m_places.at(index).isSilent;
}

void ModuleRack::setPluggedIn(int index, bool pluggedIn)
{
    if (pluggedIn == isPluggedIn(index)) {
        return;
    }
    if (pluggedIn) {
        plugIn(m_places[index]);
    } else {
        m_handler->removeModulePlugin(m_places.at(index).description.key);
    }
    emit changed(index);
}

void ModuleRack::setMoving(int index, bool moving)
{
    Place &place = m_places[index];
    if (place.isMoving == moving) {
        return;
    }
    place.isMoving = moving;
    if (!place.module.isNull()) {
        place.module->setMoving(moving);
    }
    emit changed(index);
}

void ModuleRack::setSilent(int index, bool silent)
{
    Place &place = m_places[index];
    if (place.isSilent == silent) {
        return;
    }
    place.isSilent = silent;
    if (!place.module.isNull()) {
        place.module->setSilent(silent);
    }
    emit changed(index);
}

int ModuleRack::answerTime(int index) const
{
    return m_places.at(index).answerTimeMs;
}

void ModuleRack::setAnswerTime(int index, int ms)
{
    Place &place = m_places[index];
    if (place.answerTimeMs == ms) {
        return;
    }
    place.answerTimeMs = ms;
    if (!place.module.isNull()) {
        place.module->setAnswerTime(ms);
    }
    emit changed(index);
}

std::optional<CommandHandlerInterface::Statistics> ModuleRack::statistics(int index) const
{
    const QPointer<SimulatedModule> &module = m_places.at(index).module;
    if (module.isNull()) {
        return std::nullopt;
    }
    return module->commandHandlerInterface()->statistics();
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

bool ModuleRack::plugIn(Place &place)
{
    const ModuleKind *const kind = findModuleKind(place.description.kind);
    if (kind == nullptr) {
        return false;
    }
    auto *const module = new SimulatedModule(*kind, place.description.key, m_handler, &m_clock, place.seed);
    const QMap<int, MotionProgram> &motions = place.description.motions;
    for (auto motion = motions.cbegin(); motion != motions.cend(); ++motion) {
        module->setMotion(motion.key(), motion.value());
    }
    module->setMoving(place.isMoving);
    module->setSilent(place.isSilent);
    module->setAnswerTime(place.answerTimeMs);
    place.module = module; // before it is added: a container that is notified of it may have it removed at once
    if (!m_handler->addModulePlugin(module)) {
        delete module;
        return false;
    }
    return true;
}
