#include "modules/simulation/SimulatedMachine.h"

#include "modules/simulation/WrappedCounter.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr double twoPi = 6.283185307179586;
constexpr int signalPart = 1000; // parts 0, 1, 2 ... are the axes
constexpr int supplyPart = 1001;

/// A slow drift from -1 to 1.
double drift(double seconds, double periodSeconds)
{
    return std::sin(twoPi * std::fmod(seconds, periodSeconds) / periodSeconds);
}

} // namespace

SimulatedMachine::SimulatedMachine(SimulationClock *clock, const std::vector<AxisDescription> &axes, quint32 seed)
    : m_clock(clock), m_testSignals(partSeed(seed, signalPart)), m_noise(partSeed(seed, supplyPart))
{
    m_axes.reserve(axes.size());
    for (const AxisDescription &description : axes) {
        m_axes.emplace_back(description.mechanics, description.motion, partSeed(seed, axisCount()));
    }
    m_clock->add(this);
}

SimulatedMachine::~SimulatedMachine()
{
    m_clock->remove(this);
}

void SimulatedMachine::step()
{
    constexpr double nominalMillivolts = 24000.0;
    constexpr double driftMillivolts = 120.0;
    constexpr double rippleMillivolts = 60.0;
    constexpr double rippleHz = 100.0;
    constexpr double noiseMillivolts = 8.0;
    constexpr double sourceMillivoltsPerMilliampere = 0.6; // a long, thin cable

    double milliamperes = 0.0;
    for (SimulatedAxis &axis : m_axes) {
        axis.step(nowSeconds());
        milliamperes += axis.motorCurrent();
    }
    if (m_moving) {
        m_testSignals.step();
    }
    m_supplyMillivolts = nominalMillivolts + driftMillivolts * drift(nowSeconds(), 47.0) +
                         rippleMillivolts * drift(nowSeconds(), 1.0 / rippleHz) + noiseMillivolts * m_noise.bell() -
                         sourceMillivoltsPerMilliampere * milliamperes;
    m_boardCelsius = 31.0 + 1.5 * drift(nowSeconds(), 180.0);
    m_boardCelsiusError = 0.03 * m_noise.bell();
}

int SimulatedMachine::axisCount() const
{
    return static_cast<int>(m_axes.size());
}

SimulatedAxis &SimulatedMachine::axis(int index)
{
    return m_axes.at(static_cast<std::size_t>(index));
}

const SimulatedAxis &SimulatedMachine::axis(int index) const
{
    return m_axes.at(static_cast<std::size_t>(index));
}

void SimulatedMachine::setMoving(bool moving)
{
    m_moving = moving;
    for (SimulatedAxis &axis : m_axes) {
        axis.setMoving(moving);
    }
}

bool SimulatedMachine::isMoving() const
{
    return m_moving;
}

bool SimulatedMachine::isAnyAxisMoving() const
{
    return std::any_of(m_axes.begin(), m_axes.end(),
                       [](const SimulatedAxis &axis) { return axis.rampPhase() != SimulatedAxis::RampPhase::Resting; });
}

void SimulatedMachine::countExchange()
{
    ++m_exchangeCount;
}

qint32 SimulatedMachine::exchangeCount() const
{
    return static_cast<qint32>(m_exchangeCount);
}

qint32 SimulatedMachine::elapsedMs() const
{
    return static_cast<qint32>(static_cast<quint32>(m_clock->nowMs() & 0xFFFFFFFF));
}

qint32 SimulatedMachine::supplyVoltage() const
{
    return qBound(0, wrappedCounter(m_supplyMillivolts), 65535);
}

qint32 SimulatedMachine::boardTemperature() const
{
    return qBound(0, wrappedCounter(10.0 * (m_boardCelsius + m_boardCelsiusError)), 1023);
}

const SignalGenerator &SimulatedMachine::testSignals() const
{
    return m_testSignals;
}

double SimulatedMachine::nowSeconds() const
{
    return static_cast<double>(m_clock->nowMs()) * SimulationClock::stepSeconds;
}
