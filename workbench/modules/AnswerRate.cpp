#include "modules/AnswerRate.h"

void AnswerRate::note(quint64 count, qint64 nowMs)
{
    if (!m_notes.empty() && count < m_notes.back().count) {
        reset(); // the counter of another module, that was plugged in instead
    }
    m_notes.push_back({count, nowMs});
    while (m_notes.size() > 2 && nowMs - m_notes.at(1).timeMs >= windowMs) {
        m_notes.pop_front();
    }
}

void AnswerRate::reset()
{
    m_notes.clear();
}

double AnswerRate::perSecond() const
{
    constexpr double msPerSecond = 1000.0;
    if (m_notes.size() < 2 || m_notes.back().timeMs <= m_notes.front().timeMs) {
        return 0.0;
    }
    const auto counts = double(m_notes.back().count - m_notes.front().count);
    return counts * msPerSecond / double(m_notes.back().timeMs - m_notes.front().timeMs);
}
