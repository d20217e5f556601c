#pragma once

#include "modules/simulation/NoiseSource.h"

#include <QtGlobal>

/**
 * Signals that a bench generator would feed into inputs: periodic ones, a decaying oscillation, a random walk.
 *
 * All are numbers from about -1 to 1 and change in step() only. Owned by its machine.
 */
class SignalGenerator
{
public:
    static constexpr int periodMs = 4000; ///< of sine, cosine and triangle

    explicit SignalGenerator(quint32 seed);

    /// Advances by SimulationClock::stepSeconds.
    void step();

    qint64 elapsedMs() const; ///< Time that the generator has run, ms.
    double sine() const;
    double cosine() const;
    double triangle() const;
    double deflection() const;         ///< A damped oscillation that is struck again every 6 s.
    double deflectionVelocity() const; ///< Its derivative, scaled to the same size.
    double randomWalk() const;         ///< Noise that is pulled back to 0; within -1 to 1.

private:
    NoiseSource m_noise;
    qint64 m_elapsedMs = 0;
    double m_deflection = 0.0;
    double m_deflectionVelocity = 0.0;
    double m_randomWalk = 0.0;
};
