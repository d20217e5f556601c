#include "host/CommandHandlerInterface.h"

#include <QDeadlineTimer>

#include <algorithm>

CommandHandlerInterface::~CommandHandlerInterface() = default;

void CommandHandlerInterface::sendCommandCombos(QList<CommandCombo *> combos)
{
    QElapsedTimer duration;
    duration.start();
    bool isSilent = isGivenUp();
    for (CommandCombo *combo : qAsConst(combos)) {
        if (combo == nullptr) {
            continue;
        }
        ++m_statistics.requests;
        // A copy, so that a channel that gives up half-way cannot leave half a reply behind.
        Command reply = combo->reply;
        if (!isSilent && transact(combo->request, reply, QDeadlineTimer(replyDeadlineMs))) {
            combo->reply = reply;
            m_sinceSilence.invalidate();
            continue;
        }
        if (!isSilent) {
            isSilent = true;
            m_sinceSilence.start();
        }
        combo->reply.setStatus(Command::Status::Unanswered);
        ++m_statistics.unanswered;
    }
    ++m_statistics.exchanges;
    m_statistics.lastDurationNs = duration.nsecsElapsed();
    m_statistics.longestDurationNs = std::max(m_statistics.longestDurationNs, m_statistics.lastDurationNs);
    m_statistics.totalDurationNs += m_statistics.lastDurationNs;
}

void CommandHandlerInterface::setCircularMode(bool on)
{
    m_circularMode = on;
}

bool CommandHandlerInterface::circularMode() const
{
    return m_circularMode;
}

const CommandHandlerInterface::Statistics &CommandHandlerInterface::statistics() const
{
    return m_statistics;
}

bool CommandHandlerInterface::isGivenUp() const
{
    return m_sinceSilence.isValid() && !m_sinceSilence.hasExpired(retryIntervalMs);
}
