#pragma once

#include <QtGlobal>

#include <cmath>

/// \a value rounded and wrapped to 32 bit like a controller's signed counter; 0 for what is not finite.
inline qint32 wrappedCounter(double value)
{
    if (!std::isfinite(value)) {
        return 0;
    }
    constexpr double counterRange = 4294967296.0; // 2^32
    const qint64 rounded = std::llround(std::fmod(value, counterRange));
    return static_cast<qint32>(static_cast<quint32>(rounded & 0xFFFFFFFF));
}
