#include "modules/simulation/SignalGenerator.h"

#include "modules/simulation/SimulationClock.h"

#include <cmath>

namespace
{

constexpr double twoPi = 6.283185307179586;

} // namespace

SignalGenerator::SignalGenerator(quint32 seed) : m_noise(seed) {}

void SignalGenerator::step()
{
    constexpr double stepSeconds = SimulationClock::stepSeconds;
    constexpr double angularFrequency = twoPi * 0.8; // 0.8 Hz
    constexpr double dampingRatio = 0.08;
    constexpr int strikeIntervalMs = 6000;
    constexpr double pullBack = 0.5 * stepSeconds;
    constexpr double walkStep = 0.012;

    if (m_elapsedMs % strikeIntervalMs == 0) {
        m_deflection = 1.0;
        m_deflectionVelocity = 0.0;
    }
    ++m_elapsedMs;
    const double pull = -m_deflection - 2.0 * dampingRatio * m_deflectionVelocity;
    m_deflectionVelocity += angularFrequency * pull * stepSeconds;
    m_deflection += angularFrequency * m_deflectionVelocity * stepSeconds;

    const double walked = m_randomWalk * (1.0 - pullBack) + walkStep * m_noise.uniform();
    m_randomWalk = qBound(-1.0, walked, 1.0);
}

qint64 SignalGenerator::elapsedMs() const
{
    return m_elapsedMs;
}

double SignalGenerator::sine() const
{
    return std::sin(twoPi * static_cast<double>(m_elapsedMs % periodMs) / periodMs);
}

double SignalGenerator::cosine() const
{
    return std::cos(twoPi * static_cast<double>(m_elapsedMs % periodMs) / periodMs);
}

double SignalGenerator::triangle() const
{
    const double turn = static_cast<double>(m_elapsedMs % periodMs) / periodMs;
    return 1.0 - 4.0 * std::abs(turn - 0.5);
}

double SignalGenerator::deflection() const
{
    return m_deflection;
}

double SignalGenerator::deflectionVelocity() const
{
    return m_deflectionVelocity;
}

double SignalGenerator::randomWalk() const
{
    return m_randomWalk;
}
