#include "modules/modbus/WaitBudget.h"

#include "modules/modbus/ModbusClock.h"

WaitBudget::WaitBudget(int capacityMs, int refillPercent)
    : m_capacityNs(capacityMs * modbusNsPerMs), m_refillPercent(refillPercent), m_leftNs(m_capacityNs)
{
}

qint64 WaitBudget::grantedNs(qint64 wishNs, qint64 nowNs)
{
    constexpr qint64 percent = 100;
    m_leftNs = qMin(m_capacityNs, m_leftNs + (nowNs - m_lastRefillNs) * m_refillPercent / percent);
    m_lastRefillNs = nowNs;
    return qBound<qint64>(0, wishNs, m_leftNs > 0 ? m_leftNs : 0);
}

void WaitBudget::spend(qint64 durationNs)
{
    m_leftNs -= durationNs;
}
