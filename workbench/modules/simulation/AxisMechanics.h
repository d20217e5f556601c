#pragma once

/**
 * What an axis is built of. Lengths in microsteps of the motor; the defaults describe a small stepper with a worn
 * lead screw.
 */
struct AxisMechanics
{
    double maximumVelocity = 100000.0;         ///< microsteps/s, more than 0
    double maximumAcceleration = 200000.0;     ///< microsteps/s^2, more than 0
    double microstepsPerRevolution = 51200.0;  ///< more than 0
    double encoderCountsPerRevolution = 16384; ///< more than 0
    double encoderNoiseCounts = 1.0;           ///< standard deviation, counts
    double velocityNoise = 15.0;               ///< standard deviation at rest, microsteps/s

    double naturalFrequencyHz = 40.0; ///< of motor and load on the stiffness of the drive, 1 to 100 Hz
    double dampingRatio = 0.7;        ///< 0.2 to 1
    double backlash = 9600.0;         ///< play between motor and encoder, microsteps, 0 or more

    double inertiaCurrent = 0.002;  ///< mA per microstep/s^2
    double frictionCurrent = 150.0; ///< mA, against the motion
    double viscousCurrent = 0.001;  ///< mA per microstep/s
    double loadCurrent = 120.0;     ///< mA, amplitude of the load that comes and goes once per revolution
    double weightCurrent = 0.0;     ///< mA, always the same way
    double currentNoise = 4.0;      ///< standard deviation, mA
    double standbyCurrent = 250.0;  ///< mA, while nothing is asked for

    double leftSwitchPosition = -70000.0; ///< closed at and below, microsteps
    double rightSwitchPosition = 70000.0; ///< closed at and above, microsteps
    double homeSwitchWidth = 6400.0;      ///< closed within half of it around 0, microsteps
};
