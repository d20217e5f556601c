#include "modules/simulation/SimulationClock.h"

#include <QtGlobal>

SimulationClock::SimulationClock(Drive drive, int stepsPerExchange)
    : m_drive(drive), m_stepsPerExchange(qMax(1, stepsPerExchange))
{
    m_wallClock.start();
}

void SimulationClock::add(Steppable *steppable)
{
    if (!m_steppables.contains(steppable)) {
        m_steppables.append(steppable);
    }
}

void SimulationClock::remove(Steppable *steppable)
{
    m_steppables.removeOne(steppable);
}

void SimulationClock::exchangeBegins()
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

SimulationClock::Drive SimulationClock::drive() const
{
    return m_drive;
}

void SimulationClock::advance(qint64 steps)
{
    for (qint64 i = 0; i < steps; ++i) {
        ++m_nowMs;
        for (Steppable *steppable : qAsConst(m_steppables)) {
            steppable->step();
        }
    }
}
