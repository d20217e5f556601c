#pragma once

#include "modules/simulation/NoiseSource.h"
#include "modules/simulation/SignalGenerator.h"
#include "modules/simulation/SimulatedAxis.h"
#include "modules/simulation/SimulationClock.h"

#include <vector>

/// What an axis of a machine is built of and does from the start.
struct AxisDescription
{
    AxisMechanics mechanics;
    MotionProgram motion;
};

/**
 * Everything in a module that changes with time: its axes, its supply and its test signals.
 *
 * Steps with its clock for as long as it lives. Owned by its module. GUI thread.
 */
class SimulatedMachine
{
public:
    SimulatedMachine(SimulationClock *clock, const std::vector<AxisDescription> &axes, quint32 seed);
    ~SimulatedMachine();

    /// Advances by SimulationClock::stepSeconds.
    void step();

    int axisCount() const;
    SimulatedAxis &axis(int index); ///< \a index from 0 to axisCount() - 1.
    const SimulatedAxis &axis(int index) const;

    /// Off: the axes brake and stay, the test signals stand still; time, supply and temperatures go on.
    void setMoving(bool moving);
    bool isMoving() const;
    bool isAnyAxisMoving() const;

    void countExchange();
    qint32 exchangeCount() const; ///< Exchanges that the module has taken part in, wrapped at 32 bit.
    qint32 elapsedMs() const;     ///< Simulated time, wrapped at 32 bit.

    qint32 supplyVoltage() const;    ///< mV, with ripple and the drop under load; 0 to 65535
    qint32 boardTemperature() const; ///< 0.1 degC, 0 to 1023
    const SignalGenerator &testSignals() const;

private:
    Q_DISABLE_COPY(SimulatedMachine)

    double nowSeconds() const;

    SimulationClock *const m_clock; // not owned
    std::vector<SimulatedAxis> m_axes;
    SignalGenerator m_testSignals;
    NoiseSource m_noise;
    bool m_moving = true;
    quint32 m_exchangeCount = 0;
    double m_supplyMillivolts = 24000.0;
    double m_boardCelsius = 31.0;
    double m_boardCelsiusError = 0.0;
};
