#include "host/CommandHandlerInterface.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <chrono>

namespace
{

constexpr qint64 nsPerMs = 1000000;
constexpr qint64 percent = 100;
/// A caller that has not asked again for this long leaves the queue. Much longer than the longest sampling interval.
constexpr qint64 waitingExpiryNs = 500 * nsPerMs;

bool isReplyTo(const Command &reply, const Command &request)
{
    return reply.address() == request.address() && reply.command() == request.command() &&
           reply.type() == request.type() && reply.motorBank() == request.motorBank();
}

/// Whether a pair's reply belongs to another request, or has never been filled.
bool isNewRequest(const CommandCombo *combo)
{
    return !isReplyTo(combo->reply, combo->request);
}

} // namespace

CommandHandlerInterface::~CommandHandlerInterface() = default;

void CommandHandlerInterface::sendCommandCombos(QList<CommandCombo *> combos)
{
    combos.removeAll(nullptr);
    const qint64 startNs = nowNs();
    const bool mayAsk = combos.isEmpty() || isAllowed(combos, startNs);
    if (!mayAsk && !m_isSilenced) {
        ++m_statistics.rests;
        return;
    }
    const bool isAnswered = mayAsk && exchange(combos, startNs);
    const qint64 endNs = nowNs();
    const qint64 durationNs = endNs - startNs;
    if (isAnswered) {
        m_isSilenced = false;
    } else {
        for (CommandCombo *const combo : qAsConst(combos)) {
            combo->reply.setStatus(Command::Status::Unanswered);
        }
        if (mayAsk) {
            m_isSilenced = true;
            m_nextTryNs = endNs + retryIntervalMs * nsPerMs;
        }
    }
    if (durationNs > briefExchangeMs * nsPerMs) {
        m_allowanceNs -= durationNs;
    }
    countExchange(combos.size(), isAnswered, durationNs);
}

bool CommandHandlerInterface::isAllowed(const QList<CommandCombo *> &combos, qint64 now)
{
    if (m_isSilenced && now < m_nextTryNs) {
        return false;
    }
    const bool hasNewRequest = std::any_of(combos.cbegin(), combos.cend(), isNewRequest);
    return (hasNewRequest && !m_isSilenced) || isTurnOf(combos.constFirst(), now);
}

bool CommandHandlerInterface::isTurnOf(const CommandCombo *caller, qint64 now)
{
    refillAllowance(now);
    if (m_allowanceNs > 0 && m_waiting.isEmpty()) {
        return true;
    }
    m_waiting.erase(
        std::remove_if(m_waiting.begin(), m_waiting.end(),
                       [now](const Waiting &waiting) { return now - waiting.lastAskedNs > waitingExpiryNs; }),
        m_waiting.end());
    const auto found = std::find_if(m_waiting.begin(), m_waiting.end(),
                                    [caller](const Waiting &waiting) { return waiting.caller == caller; });
    const bool isFirst = m_waiting.isEmpty() || found == m_waiting.begin();
    if (m_allowanceNs > 0 && isFirst) {
        if (found != m_waiting.end()) {
            m_waiting.erase(found);
        }
        return true;
    }
    if (found == m_waiting.end()) {
        m_waiting.append({caller, now});
    } else {
        found->lastAskedNs = now;
    }
    return false;
}

bool CommandHandlerInterface::exchange(const QList<CommandCombo *> &combos, qint64 startNs)
{
    QVector<Command> replies;
    replies.reserve(combos.size());
    for (const CommandCombo *const combo : combos) {
        const qint64 remainingMs = exchangeDeadlineMs - (nowNs() - startNs) / nsPerMs;
        Command reply = combo->reply;
        if (remainingMs <= 0 || !transact(combo->request, reply, QDeadlineTimer(remainingMs))) {
            return false;
        }
        replies.append(reply);
    }
    if (nowNs() - startNs > exchangeDeadlineMs * nsPerMs) {
        return false; // the channel has waited longer than it may
    }
    for (int index = 0; index < replies.size(); ++index) {
        const Command &request = combos.at(index)->request;
        Command &reply = replies[index];
        reply.setAddress(request.address());
        reply.setCommand(request.command());
        reply.setType(request.type());
        reply.setMotorBank(request.motorBank());
        combos.at(index)->reply = reply;
    }
    return true;
}

void CommandHandlerInterface::refillAllowance(qint64 now)
{
    m_allowanceNs += (now - m_allowanceTimeNs) * busySharePercent / percent;
    m_allowanceNs = std::min(m_allowanceNs, busyAllowanceMs * nsPerMs);
    m_allowanceTimeNs = now;
}

void CommandHandlerInterface::countExchange(int requests, bool isAnswered, qint64 durationNs)
{
    ++m_statistics.exchanges;
    m_statistics.requests += static_cast<quint64>(requests);
    if (isAnswered) {
        ++m_statistics.answeredExchanges;
    } else {
        m_statistics.unanswered += static_cast<quint64>(requests);
    }
    m_statistics.lastDurationNs = durationNs;
    m_statistics.longestDurationNs = std::max(m_statistics.longestDurationNs, durationNs);
    m_statistics.totalDurationNs += durationNs;
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

bool CommandHandlerInterface::isSilenced() const
{
    return m_isSilenced;
}

void CommandHandlerInterface::setSilenced(bool isSilenced)
{
    m_isSilenced = isSilenced;
}

qint64 CommandHandlerInterface::nowNs() const
{
    using namespace std::chrono;
    return duration_cast<nanoseconds>(steady_clock::now().time_since_epoch()).count();
}
