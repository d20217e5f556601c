#pragma once

#include <QtGlobal>

#include <deque>

/**
 * The rate of a counter that is looked at again and again, such as that of the answers of a module.
 */
class AnswerRate
{
public:
    static constexpr int windowMs = 2000; ///< the rate is a mean over this time

    /// Notes that the counter was at \a count at \a nowMs, ms of any clock that does not run backwards.
    void note(quint64 count, qint64 nowMs);
    /// Forgets everything, for a module that is gone.
    void reset();

    /// Counts per second in the last windowMs; 0 before there are two notes.
    double perSecond() const;

private:
    struct Note
    {
        quint64 count;
        qint64 timeMs;
    };

    std::deque<Note> m_notes; // the oldest first
};
