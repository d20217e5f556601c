#include "modules/simulation/SimulationClock.h"

#include "modules/simulation/SimulatedMachine.h"

#include <QtGlobal>

SimulationClock::SimulationClock(Drive drive, int stepsPerExchange)
    : m_drive(drive), m_stepsPerExchange(qMax(1, stepsPerExchange))
{
    m_wallClock.start();
}

void SimulationClock::add(SimulatedMachine *machine)
{
    if (!m_machines.contains(machine)) {
        m_machines.append(machine);
    }
}

void SimulationClock::remove(SimulatedMachine *machine)
{
    m_machines.removeOne(machine);
}

void SimulationClock::beginExchange()
{
    if (m_drive == Drive::Exchanges) {
        advance(m_stepsPerExchange);
        return;
    }
    catchUp();
}

void SimulationClock::catchUp()
{
    if (m_drive == Drive::WallClock) {
        catchUpTo(m_wallClock.elapsed());
    }
}

void SimulationClock::catchUpTo(qint64 wallMs)
{
    // A long pause is not made up for: nobody saw what happened in it, and the catching up would be felt.
    const qint64 lagMs = wallMs - m_skippedMs - m_nowMs;
    const qint64 stepsMs = qMin<qint64>(lagMs, maximumLagMs);
    m_skippedMs += lagMs - stepsMs;
    advance(stepsMs);
}

qint64 SimulationClock::nowMs() const
{
    return m_nowMs;
}

void SimulationClock::advance(qint64 steps)
{
    for (qint64 i = 0; i < steps; ++i) {
        ++m_nowMs;
        for (SimulatedMachine *machine : qAsConst(m_machines)) {
            machine->step();
        }
    }
}
