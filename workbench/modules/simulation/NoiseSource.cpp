#include "modules/simulation/NoiseSource.h"

#include <cmath>

NoiseSource::NoiseSource(quint32 seed) : m_generator(seed) {}

double NoiseSource::uniform()
{
    constexpr double halfRange = 4294967295.0 / 2.0;
    return static_cast<double>(m_generator()) / halfRange - 1.0;
}

double NoiseSource::bell()
{
    // A uniform number from -1 to 1 has the variance 1/3, the sum of four 4/3.
    static const double scale = std::sqrt(3.0 / 4.0);
    double sum = 0.0;
    for (int i = 0; i < 4; ++i) {
        sum += uniform();
    }
    return sum * scale;
}

quint32 partSeed(quint32 seed, int part)
{
    constexpr quint32 oddMultiplier = 2654435761u; // 2^32 divided by the golden ratio: spreads neighbours widely
    const quint32 spread = seed * oddMultiplier;
    return (spread ^ (spread >> 16)) + (static_cast<quint32>(part) + 1u) * oddMultiplier;
}
