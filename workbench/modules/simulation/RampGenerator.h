#pragma once

/**
 * The commanded motion of one axis: keeps velocity and acceleration within their limits at every step.
 *
 * Positions in microsteps, velocities in microsteps/s, accelerations in microsteps/s^2. Each step...() call takes
 * SimulationClock::stepSeconds.
 */
class RampGenerator
{
public:
    /// \param maximumVelocity, maximumAcceleration more than 0
    RampGenerator(double maximumVelocity, double maximumAcceleration);

    /// Goes on towards \a target with a trapezoidal velocity profile; ends exactly on it.
    void stepTo(double target);

    /// Brakes, and stays where that ends.
    void stepToRest();

    /// Keeps to a path that will be at \a position with \a velocity after this step, as closely as the limits allow.
    void stepAlong(double position, double velocity);

    double position() const;
    double velocity() const;
    double acceleration() const;
    bool isResting() const;

private:
    void accelerateTo(double wantedVelocity);

    const double m_maximumVelocity;
    const double m_maximumAcceleration;
    double m_position = 0.0;
    double m_velocity = 0.0;
    double m_acceleration = 0.0;
};
