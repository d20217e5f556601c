#include "modules/recording/SamplingTurns.h"

#include <algorithm>

namespace
{

bool contains(const std::vector<const void *> &callers, const void *caller)
{
    return std::find(callers.cbegin(), callers.cend(), caller) != callers.cend();
}

} // namespace

bool SamplingTurns::beginsNextRow(const void *caller)
{
    bool isNextRow = false;
    if (!m_isTurnOpen || contains(m_inTurn, caller)) {
        m_inTurn.clear();
        isNextRow = m_ofRow.empty() || contains(m_ofRow, caller);
        if (!m_isTurnOpen) {
            m_isTurnOpen = true;
            QMetaObject::invokeMethod(
                &m_context, [this] { m_isTurnOpen = false; }, Qt::QueuedConnection);
        }
        if (isNextRow) {
            m_ofRow.clear();
        }
    }
    m_inTurn.push_back(caller);
    if (!contains(m_ofRow, caller)) {
        m_ofRow.push_back(caller);
    }
    return isNextRow;
}
