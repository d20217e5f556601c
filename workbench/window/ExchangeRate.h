#pragma once

#include "host/CommandHandlerInterface.h"

#include <QtGlobal>

#include <deque>

/**
 * The rate of the exchanges with one module, from its channel's counters that are looked at again and again.
 */
class ExchangeRate
{
public:
    static constexpr int windowMs = 2000; ///< the rate is a mean over this time

    /// Notes the counters at \a nowMs, ms of any clock that does not run backwards.
    void note(const CommandHandlerInterface::Statistics &statistics, qint64 nowMs);
    /// Forgets everything, for a module that is gone.
    void reset();

    /// Exchanges per second in the last windowMs; 0 before there are two notes.
    double perSecond() const;

private:
    struct Note
    {
        quint64 exchanges;
        qint64 timeMs;
    };

    std::deque<Note> m_notes; // the oldest first
};

/// Mean duration of all exchanges in µs; 0 before the first one.
double meanDurationUs(const CommandHandlerInterface::Statistics &statistics);
