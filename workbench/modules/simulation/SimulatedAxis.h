#pragma once

#include "modules/simulation/AxisMechanics.h"
#include "modules/simulation/MotionProgram.h"
#include "modules/simulation/NoiseSource.h"
#include "modules/simulation/RampGenerator.h"

#include <QtGlobal>

/**
 * One motor with its drive, load and encoder, as a controller reports it: in whole numbers that wrap at 32 bit.
 *
 * A ramp generator commands; the motor follows on the spring of its drive (a damped second-order lag); the encoder
 * sits behind a play; the current is what acceleration, friction and a load that turns with the shaft ask for, and it
 * heats the winding. All noise is drawn in step(), so that reading changes nothing. Owned by its machine.
 */
class SimulatedAxis
{
public:
    enum class RampPhase : qint32
    {
        Resting = 0,
        Accelerating = 1,
        Cruising = 2,
        Braking = 3
    };

    static constexpr double maximumNumber = 1e12; ///< of a motion program, either sign

    SimulatedAxis(const AxisMechanics &mechanics, const MotionProgram &program, quint32 seed);

    /**
     * Numbers that are not finite become 0, those beyond maximumNumber are cut, a negative amplitude loses its sign,
     * a period is at least 10 ms.
     */
    void setProgram(const MotionProgram &program);

    /// Off: brakes and stays.
    void setMoving(bool moving);

    /// Advances by SimulationClock::stepSeconds to the time \a nowSeconds.
    void step(double nowSeconds);

    const AxisMechanics &mechanics() const;

    qint32 targetPosition() const;   ///< Where the program wants to be, microsteps.
    qint32 rampPosition() const;     ///< microsteps
    qint32 rampVelocity() const;     ///< microsteps/s
    qint32 rampAcceleration() const; ///< microsteps/s^2
    qint32 actualPosition() const;   ///< microsteps
    qint32 actualVelocity() const;   ///< microsteps/s, with noise
    qint32 followingError() const;   ///< Ramp minus actual position, microsteps.
    qint32 encoderPosition() const;  ///< counts, with noise
    qint32 encoderDeviation() const; ///< Actual position minus what the encoder says, microsteps.
    qint32 torqueCurrent() const;    ///< mA with sign, with noise
    qint32 motorCurrent() const;     ///< Size of the current in the windings, mA, 0 to 4095.
    qint32 loadReserve() const;      ///< 1023 without load, 0 when the motor is about to stall.
    qint32 temperature() const;      ///< Of the winding, 0.1 degC, 0 to 1023.
    qint32 microstepIndex() const;   ///< Within the electrical period of 1024 microsteps.
    qint32 coilCurrentA() const;     ///< Entry of the sine table, -248 to 248.
    qint32 coilCurrentB() const;     ///< A quarter period ahead of coil A.
    qint32 completedMoves() const;   ///< Arrivals at an end of the way.
    RampPhase rampPhase() const;
    bool isTargetReached() const;
    bool isLeftSwitchClosed() const;
    bool isRightSwitchClosed() const;
    bool isHomeSwitchClosed() const;

private:
    void command(double nowSeconds);
    void reciprocate();
    void follow();
    void load();
    double encoderMicrosteps() const;

    const AxisMechanics m_mechanics;
    MotionProgram m_program;
    bool m_moving = true;
    NoiseSource m_noise;
    RampGenerator m_ramp;

    double m_target = 0.0; // microsteps
    bool m_towardsUpperEnd = true;
    int m_restedMs = 0;
    qint32 m_completedMoves = 0;

    double m_position = 0.0;     // of the motor, microsteps
    double m_velocity = 0.0;     // microsteps/s
    double m_acceleration = 0.0; // microsteps/s^2
    double m_geared = 0.0;       // behind the play, microsteps
    double m_current = 0.0;      // mA, smoothed
    double m_celsius = 25.0;     // degC

    double m_velocityError = 0.0; // noise of the last step, in the unit of what it is added to
    double m_encoderError = 0.0;
    double m_currentError = 0.0;
    double m_celsiusError = 0.0;
};
