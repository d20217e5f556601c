#include "modules/simulation/SimulatedAxis.h"

#include "modules/simulation/SimulationClock.h"
#include "modules/simulation/WrappedCounter.h"

#include <cmath>

namespace
{

constexpr double stepSeconds = SimulationClock::stepSeconds;
constexpr double twoPi = 6.283185307179586;
constexpr int restAtEndsMs = 400;
constexpr double shortestPeriodSeconds = 0.01;
constexpr int microstepsPerElectricalPeriod = 1024;
constexpr double coilTableAmplitude = 248.0;

double usable(double value)
{
    return std::isfinite(value) ? qBound(-SimulatedAxis::maximumNumber, value, SimulatedAxis::maximumNumber) : 0.0;
}

double coilCurrent(int microstep)
{
    return coilTableAmplitude * std::sin(twoPi * microstep / microstepsPerElectricalPeriod);
}

} // namespace

SimulatedAxis::SimulatedAxis(const AxisMechanics &mechanics, const MotionProgram &program, quint32 seed)
    : m_mechanics(mechanics), m_noise(seed), m_ramp(mechanics.maximumVelocity, mechanics.maximumAcceleration)
{
    setProgram(program);
}

void SimulatedAxis::setProgram(const MotionProgram &program)
{
    m_program.kind = program.kind;
    m_program.amplitude = std::abs(usable(program.amplitude));
    m_program.periodSeconds = qMax(usable(program.periodSeconds), shortestPeriodSeconds);
    m_program.phaseDegrees = usable(program.phaseDegrees);
    m_program.offset = usable(program.offset);
    m_restedMs = 0;
}

void SimulatedAxis::setMoving(bool moving)
{
    m_moving = moving;
}

void SimulatedAxis::step(double nowSeconds)
{
    command(nowSeconds);
    follow();
    load();
}

const AxisMechanics &SimulatedAxis::mechanics() const
{
    return m_mechanics;
}

void SimulatedAxis::command(double nowSeconds)
{
    if (!m_moving) {
        m_ramp.stepToRest();
        return;
    }
    switch (m_program.kind) {
    case MotionProgram::Kind::Hold:
        m_target = m_program.offset;
        m_ramp.stepTo(m_target);
        return;
    case MotionProgram::Kind::Reciprocate:
        reciprocate();
        return;
    case MotionProgram::Kind::Sine:
        break;
    }
    const double angularFrequency = twoPi / m_program.periodSeconds;
    const double angle = twoPi * (std::fmod(nowSeconds, m_program.periodSeconds) / m_program.periodSeconds +
                                  m_program.phaseDegrees / 360.0);
    m_target = m_program.offset + m_program.amplitude * std::sin(angle);
    m_ramp.stepAlong(m_target, m_program.amplitude * angularFrequency * std::cos(angle));
}

void SimulatedAxis::reciprocate()
{
    m_target = m_program.offset + (m_towardsUpperEnd ? m_program.amplitude : -m_program.amplitude);
    m_ramp.stepTo(m_target);
    if (!isTargetReached()) {
        m_restedMs = 0;
        return;
    }
    if (m_restedMs == 0) {
        ++m_completedMoves;
    }
    ++m_restedMs;
    if (m_restedMs > restAtEndsMs) {
        m_towardsUpperEnd = !m_towardsUpperEnd;
        m_restedMs = 0;
    }
}

void SimulatedAxis::follow()
{
    // A mass on a spring whose other end is the ramp, x'' = w^2 (ramp - x) - 2 d w x': at constant velocity it lags by
    // 2 d / w seconds.
    const double angularFrequency = twoPi * m_mechanics.naturalFrequencyHz;
    m_acceleration = angularFrequency * angularFrequency * (m_ramp.position() - m_position) -
                     2.0 * m_mechanics.dampingRatio * angularFrequency * m_velocity;
    m_velocity += m_acceleration * stepSeconds;
    m_position += m_velocity * stepSeconds;

    const double play = m_mechanics.backlash / 2.0;
    m_geared = qBound(m_position - play, m_geared, m_position + play);

    m_velocityError = m_noise.bell() * (m_mechanics.velocityNoise + 0.001 * std::abs(m_velocity));
    m_encoderError = m_noise.bell() * m_mechanics.encoderNoiseCounts;
}

void SimulatedAxis::load()
{
    constexpr double creepVelocity = 500.0;          // microsteps/s, below it friction fades away
    constexpr double smoothingSeconds = 0.004;       // of the current controller
    constexpr double ambientCelsius = 25.0;          // degC
    constexpr double warmingPerSquareAmpere = 100.0; // K / A^2 in the long run
    constexpr double warmingSeconds = 60.0;          // time constant of the winding

    const double turns = m_position / m_mechanics.microstepsPerRevolution;
    const double wanted =
        m_mechanics.inertiaCurrent * m_acceleration +
        m_mechanics.frictionCurrent * std::tanh(m_velocity / creepVelocity) + m_mechanics.viscousCurrent * m_velocity +
        m_mechanics.loadCurrent * std::sin(twoPi * (turns - std::floor(turns))) + m_mechanics.weightCurrent;
    m_current += (wanted - m_current) * stepSeconds / smoothingSeconds;
    m_currentError = m_noise.bell() * m_mechanics.currentNoise;

    const double amperes = std::hypot(m_current, m_mechanics.standbyCurrent) / 1000.0;
    const double settled = ambientCelsius + warmingPerSquareAmpere * amperes * amperes;
    m_celsius += (settled - m_celsius) * stepSeconds / warmingSeconds;
    m_celsiusError = m_noise.bell() * 0.04;
}

qint32 SimulatedAxis::targetPosition() const
{
    return wrappedCounter(m_target);
}

qint32 SimulatedAxis::rampPosition() const
{
    return wrappedCounter(m_ramp.position());
}

qint32 SimulatedAxis::rampVelocity() const
{
    return wrappedCounter(m_ramp.velocity());
}

qint32 SimulatedAxis::rampAcceleration() const
{
    return wrappedCounter(m_ramp.acceleration());
}

qint32 SimulatedAxis::actualPosition() const
{
    return wrappedCounter(m_position);
}

qint32 SimulatedAxis::actualVelocity() const
{
    return wrappedCounter(m_velocity + m_velocityError);
}

qint32 SimulatedAxis::followingError() const
{
    return wrappedCounter(m_ramp.position() - m_position);
}

qint32 SimulatedAxis::encoderPosition() const
{
    const double countsPerMicrostep = m_mechanics.encoderCountsPerRevolution / m_mechanics.microstepsPerRevolution;
    return wrappedCounter(encoderMicrosteps() * countsPerMicrostep);
}

qint32 SimulatedAxis::encoderDeviation() const
{
    return wrappedCounter(m_position - encoderMicrosteps());
}

qint32 SimulatedAxis::torqueCurrent() const
{
    return wrappedCounter(m_current + m_currentError);
}

qint32 SimulatedAxis::motorCurrent() const
{
    const double size = std::hypot(m_current, m_mechanics.standbyCurrent) + m_currentError;
    return qBound(0, wrappedCounter(size), 4095);
}

qint32 SimulatedAxis::loadReserve() const
{
    return qBound(0, wrappedCounter(1023.0 - std::abs(m_current + m_currentError)), 1023);
}

qint32 SimulatedAxis::temperature() const
{
    return qBound(0, wrappedCounter(10.0 * (m_celsius + m_celsiusError)), 1023);
}

qint32 SimulatedAxis::microstepIndex() const
{
    return rampPosition() & (microstepsPerElectricalPeriod - 1);
}

qint32 SimulatedAxis::coilCurrentA() const
{
    return wrappedCounter(coilCurrent(microstepIndex()));
}

qint32 SimulatedAxis::coilCurrentB() const
{
    return wrappedCounter(coilCurrent(microstepIndex() + microstepsPerElectricalPeriod / 4));
}

qint32 SimulatedAxis::completedMoves() const
{
    return m_completedMoves;
}

SimulatedAxis::RampPhase SimulatedAxis::rampPhase() const
{
    if (m_ramp.isResting()) {
        return RampPhase::Resting;
    }
    if (qFuzzyIsNull(m_ramp.acceleration())) {
        return RampPhase::Cruising;
    }
    return (m_ramp.acceleration() > 0.0) == (m_ramp.velocity() > 0.0) ? RampPhase::Accelerating : RampPhase::Braking;
}

bool SimulatedAxis::isTargetReached() const
{
    return m_ramp.isResting() && qAbs(m_ramp.position() - m_target) < 0.5;
}

bool SimulatedAxis::isLeftSwitchClosed() const
{
    return m_position <= m_mechanics.leftSwitchPosition;
}

bool SimulatedAxis::isRightSwitchClosed() const
{
    return m_position >= m_mechanics.rightSwitchPosition;
}

bool SimulatedAxis::isHomeSwitchClosed() const
{
    return std::abs(m_position) <= m_mechanics.homeSwitchWidth / 2.0;
}

double SimulatedAxis::encoderMicrosteps() const
{
    return m_geared + m_encoderError * m_mechanics.microstepsPerRevolution / m_mechanics.encoderCountsPerRevolution;
}
