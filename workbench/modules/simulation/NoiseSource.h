#pragma once

#include <QtGlobal>

#include <random>

/**
 * Repeatable noise: the same seed gives the same sequence on every platform.
 *
 * The scaling is our own because the standard library fixes the numbers of its generators, but not those of its
 * distributions.
 */
class NoiseSource
{
public:
    explicit NoiseSource(quint32 seed);

    /// Evenly distributed from -1 to 1.
    double uniform();

    /// Bell-shaped around 0 with standard deviation 1, never beyond +-3.5: the scaled sum of four uniform numbers.
    double bell();

private:
    std::mt19937 m_generator;
};

/// A seed for part number \a part of something that has \a seed; different parts get unrelated noise.
quint32 partSeed(quint32 seed, int part);
