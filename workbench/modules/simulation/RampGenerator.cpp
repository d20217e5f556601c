#include "modules/simulation/RampGenerator.h"

#include "modules/simulation/SimulationClock.h"

#include <QtGlobal>

#include <cmath>

namespace
{

constexpr double stepSeconds = SimulationClock::stepSeconds;

} // namespace

RampGenerator::RampGenerator(double maximumVelocity, double maximumAcceleration)
    : m_maximumVelocity(maximumVelocity), m_maximumAcceleration(maximumAcceleration)
{
}

void RampGenerator::stepTo(double target)
{
    const double velocityPerStep = m_maximumAcceleration * stepSeconds;
    const double distance = target - m_position;
    if (std::abs(m_velocity) <= velocityPerStep && std::abs(distance) <= velocityPerStep * stepSeconds) {
        m_acceleration = -m_velocity / stepSeconds;
        m_position = target;
        m_velocity = 0.0;
        return;
    }
    const double direction = std::copysign(1.0, distance);
    // The maximum velocity v after this step from which braking still ends on the target:
    // v^2 / 2a + v t/2 = distance left - present velocity t/2, with t the step.
    const double distanceLeft = std::abs(distance) - direction * m_velocity * stepSeconds / 2.0;
    const double halfStep = velocityPerStep / 2.0;
    const double stoppable =
        distanceLeft <= 0.0 ? 0.0
                            : std::sqrt(halfStep * halfStep + 2.0 * m_maximumAcceleration * distanceLeft) - halfStep;
    accelerateTo(direction * stoppable);
}

void RampGenerator::stepToRest()
{
    accelerateTo(0.0);
}

void RampGenerator::stepAlong(double position, double velocity)
{
    // Half the acceleration is left for closing a gap; a gentle gain near the path, so that nothing swings.
    constexpr double gainPerSecond = 50.0;
    const double gap = position - (m_position + m_velocity * stepSeconds);
    const double closing = qMin(std::abs(gap) * gainPerSecond, std::sqrt(m_maximumAcceleration * std::abs(gap)));
    accelerateTo(velocity + std::copysign(closing, gap));
}

double RampGenerator::position() const
{
    return m_position;
}

double RampGenerator::velocity() const
{
    return m_velocity;
}

double RampGenerator::acceleration() const
{
    return m_acceleration;
}

bool RampGenerator::isResting() const
{
    return qFuzzyIsNull(m_velocity);
}

void RampGenerator::accelerateTo(double wantedVelocity)
{
    const double velocityPerStep = m_maximumAcceleration * stepSeconds;
    const double permitted = qBound(-m_maximumVelocity, wantedVelocity, m_maximumVelocity);
    const double next = qBound(m_velocity - velocityPerStep, permitted, m_velocity + velocityPerStep);
    m_acceleration = (next - m_velocity) / stepSeconds;
    m_position += (m_velocity + next) / 2.0 * stepSeconds;
    m_velocity = next;
}
