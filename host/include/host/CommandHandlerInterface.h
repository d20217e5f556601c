#pragma once

#include "host/CommandCombo.h"
#include "host/HostExport.h"

#include <QList>
#include <QVector>

class QDeadlineTimer;

/**
 * The command channel of one module: sends requests and waits for the replies.
 *
 * Owned by the module, used from the GUI thread only. sendCommandCombos() blocks until all replies are in and spins no
 * event loop. Because it holds up everything else on that thread, its time is limited in three ways:
 *
 * - Deadline: one exchange, however many requests it has, takes exchangeDeadlineMs at most. An exchange that is not
 *   complete by then fills no reply at all, so that no caller pairs a new value with an old one.
 * - Silence: after a missed deadline the channel answers "unanswered" at once for at least retryIntervalMs, then tries
 *   again.
 * - Rests: a channel whose module answers slowly may use busySharePercent of the time. Exchanges of up to
 *   briefExchangeMs cost nothing; longer ones are paid from an allowance of busyAllowanceMs that refills at that share.
 *   While the allowance is used up the channel rests: calls return at once and leave their pairs as they are. When it
 *   is over, those that were turned away get their turn in the order in which they asked. A request that the pair has
 *   no reply to yet does not wait: the reply of an earlier request in its place would be a wrong value.
 */
class HOST_EXPORT CommandHandlerInterface
{
public:
    /// What a channel has done since it was made.
    struct Statistics
    {
        quint64 exchanges = 0;         ///< calls of sendCommandCombos() that were not turned away in a rest
        quint64 answeredExchanges = 0; ///< those of them that filled all their replies
        quint64 rests = 0;             ///< calls that were turned away in a rest; counted nowhere else
        quint64 requests = 0;          ///< requests in all exchanges
        quint64 unanswered = 0;        ///< requests in exchanges that were not answered completely and in time
        qint64 lastDurationNs = 0;     ///< duration of the last exchange, ns
        qint64 longestDurationNs = 0;  ///< the longest so far, ns
        qint64 totalDurationNs = 0;    ///< sum over all exchanges, ns
    };

    static constexpr int exchangeDeadlineMs = 120; ///< of a whole exchange; two requests of 50 ms each fit
    static constexpr int retryIntervalMs = 1000;
    static constexpr int briefExchangeMs = 2;
    static constexpr int busySharePercent = 10;
    static constexpr int busyAllowanceMs = 100;

    CommandHandlerInterface() = default;
    virtual ~CommandHandlerInterface();

    /**
     * Sends the request of every pair in list order and fills the reply of every pair before it returns.
     *
     * When an answer does not come in time all replies keep their old values and get the status Unanswered. In a rest
     * they keep their status, too. Null pairs are skipped.
     */
    virtual void sendCommandCombos(QList<CommandCombo *> combos);

    /// In circular mode a module sends its values unasked, again and again; false leaves that mode.
    void setCircularMode(bool on);
    bool circularMode() const;

    const Statistics &statistics() const;

    /// Whether the last answer that was waited for did not come: true until the module answers again.
    bool isSilenced() const;

protected:
    /**
     * Brings one request to the module and its answer into \a reply.
     *
     * \return false when no answer came before \a deadline, which is that of the whole exchange; \a reply is then
     *         dropped, as are those of the requests before it
     */
    virtual bool transact(const Command &request, Command &reply, const QDeadlineTimer &deadline) = 0;

    /// A clock that never runs backwards, ns; the time by which deadlines, silence and rests are measured.
    virtual qint64 nowNs() const;

private:
    Q_DISABLE_COPY(CommandHandlerInterface)

    /// Someone who was turned away, known by the address of the first pair, which is never followed.
    struct Waiting
    {
        const CommandCombo *caller;
        qint64 lastAskedNs;
    };

    bool isAllowed(const QList<CommandCombo *> &combos, qint64 now);
    bool isTurnOf(const CommandCombo *caller, qint64 now);
    bool exchange(const QList<CommandCombo *> &combos, qint64 startNs);
    void refillAllowance(qint64 now);
    void count(int requests, bool isAnswered, qint64 durationNs);

    bool m_circularMode = false;
    bool m_isSilenced = false;
    qint64 m_nextTryNs = 0; // while silenced
    qint64 m_allowanceNs = qint64{busyAllowanceMs} * 1000000;
    qint64 m_allowanceTimeNs = 0;
    QVector<Waiting> m_waiting; // the first to ask comes first
    Statistics m_statistics;
};
