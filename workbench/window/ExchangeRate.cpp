#include "window/ExchangeRate.h"

void ExchangeRate::note(const CommandHandlerInterface::Statistics &statistics, qint64 nowMs)
{
    if (!m_notes.empty() && statistics.exchanges < m_notes.back().exchanges) {
        reset(); // the counters of another module, that was plugged in instead
    }
    m_notes.push_back({statistics.exchanges, nowMs});
    while (m_notes.size() > 2 && nowMs - m_notes.at(1).timeMs >= windowMs) {
        m_notes.pop_front();
    }
}

void ExchangeRate::reset()
{
    m_notes.clear();
}

double ExchangeRate::perSecond() const
{
    constexpr double msPerSecond = 1000.0;
    if (m_notes.size() < 2 || m_notes.back().timeMs <= m_notes.front().timeMs) {
        return 0.0;
    }
    const auto exchanges = double(m_notes.back().exchanges - m_notes.front().exchanges);
    return exchanges * msPerSecond / double(m_notes.back().timeMs - m_notes.front().timeMs);
}

double meanDurationUs(const CommandHandlerInterface::Statistics &statistics)
{
    constexpr double nsPerUs = 1000.0;
    return statistics.exchanges == 0 ? 0.0
                                     : double(statistics.totalDurationNs) / double(statistics.exchanges) / nsPerUs;
}
