#pragma once

#include <QtGlobal>

/**
 * Limits how long a thread waits in all, over many independent waits.
 *
 * It holds time, from which each wait is taken and which comes back as a share of the time that passes. So waits that
 * follow each other without a pause take no longer together than what it holds when it is full. Pure: the caller's clock.
 */
class WaitBudget
{
public:
    /// \param refillPercent of the time that passes
    WaitBudget(int capacityMs, int refillPercent);

    /// How long a wait that would take \a wishNs may take when it begins at \a nowNs; 0 when nothing is left.
    qint64 grantedNs(qint64 wishNs, qint64 nowNs);

    void spend(qint64 durationNs);

private:
    const qint64 m_capacityNs;
    const int m_refillPercent;
    qint64 m_leftNs;
    qint64 m_lastRefillNs = 0;
};
