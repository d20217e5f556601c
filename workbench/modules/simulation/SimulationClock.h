#pragma once

#include <QElapsedTimer>
#include <QList>

class SimulatedMachine;

/**
 * The time of all simulated modules, in fixed steps of 1 ms.
 *
 * Driven by the wall clock it catches up with real time whenever a module is asked for values, and whenever catchUp()
 * is called (at most maximumLagMs, what is beyond that is skipped). Driven by exchanges it advances a fixed number of
 * steps at every exchange and never otherwise, so that the values that are read do not depend on how fast the machine
 * is. GUI thread.
 */
class SimulationClock
{
public:
    enum class Drive
    {
        WallClock,
        Exchanges
    };

    static constexpr double stepSeconds = 0.001;
    static constexpr int maximumLagMs = 1000;

    /// \param stepsPerExchange steps (ms) that one exchange takes when driven by exchanges, at least 1
    explicit SimulationClock(Drive drive, int stepsPerExchange = 14);

    void add(SimulatedMachine *machine);    ///< Not owned; has to be removed before it dies.
    void remove(SimulatedMachine *machine); ///< Unknown ones are ignored.

    /// Called by every channel at the start of every exchange.
    void beginExchange();

    /// Advances to the present time when driven by the wall clock, else does nothing.
    void catchUp();
    /// As catchUp(), with the time of the wall clock since the start, ms, given.
    void catchUpTo(qint64 wallMs);

    qint64 nowMs() const; ///< Simulated time since the start, ms.

private:
    void advance(qint64 steps);

    const Drive m_drive;
    const int m_stepsPerExchange;
    qint64 m_nowMs = 0;
    qint64 m_skippedMs = 0;
    QElapsedTimer m_wallClock;
    QList<SimulatedMachine *> m_machines;
};
