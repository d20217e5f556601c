#pragma once

#include <QtGlobal>

#include <chrono>

/// Monotonic time of connections and channels, ns.
inline qint64 modbusNowNs()
{
    using namespace std::chrono;
    return duration_cast<nanoseconds>(steady_clock::now().time_since_epoch()).count();
}

constexpr qint64 modbusNsPerMs = 1000000;
