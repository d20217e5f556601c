#pragma once

#include "host/CommandCombo.h"
#include "host/HostExport.h"

#include <QList>
#include <QVector>

class QDeadlineTimer;

/**
 * The command channel of one module: sends requests and waits for the replies.
 *
 * Owned by the module, used from the GUI thread only. sendCommandCombos() blocks until all replies have arrived and
 * runs no event loop. Because it blocks everything else on that thread, its time is limited in three ways:
 *
 * - Deadline: one exchange, of any number of requests, takes at most exchangeDeadlineMs. An exchange that is incomplete
 *   at its deadline fills no reply at all, so that no caller combines a new value with an old one.
 * - Silence: after a missed deadline, every exchange fails at once for retryIntervalMs; the next one is sent again.
 * - Rests: a channel whose module answers slowly may use busySharePercent of the time. An exchange of up to
 *   briefExchangeMs is free; the duration of a longer one is subtracted from an allowance, which refills at that share
 *   up to busyAllowanceMs. While the allowance is used up the channel rests: calls return at once and leave their pairs
 *   unchanged. After a rest the callers that were rejected are served in the order of their calls. A request that has
 *   changed since its last reply is sent even in a rest: the reply to the previous request would be a wrong value.
 *
 * Plugins call sendCommandCombos() and setCircularMode(). Statistics and silence serve the host application; transact()
 * and nowNs() are implemented by channels.
 */
class HOST_EXPORT CommandHandlerInterface
{
public:
    /// What a channel has done since it was made.
    struct Statistics
    {
        quint64 exchanges = 0;         ///< calls of sendCommandCombos() that were not rejected in a rest
        quint64 answeredExchanges = 0; ///< exchanges that filled all their replies
        quint64 rests = 0;             ///< calls that were rejected in a rest; not among the exchanges
        quint64 requests = 0;          ///< requests in all exchanges
        quint64 unanswered = 0;        ///< requests in exchanges that were incomplete at their deadline
        qint64 lastDurationNs = 0;     ///< duration of the last exchange, ns
        qint64 longestDurationNs = 0;  ///< the longest so far, ns
        qint64 totalDurationNs = 0;    ///< sum over all exchanges, ns
    };

    static constexpr int exchangeDeadlineMs = 120; ///< long enough for two requests of 50 ms each
    static constexpr int retryIntervalMs = 1000;
    static constexpr int briefExchangeMs = 2;
    static constexpr int busySharePercent = 10;
    static constexpr int busyAllowanceMs = 100;

    CommandHandlerInterface() = default;
    virtual ~CommandHandlerInterface();

    /**
     * Sends the request of every pair in list order and fills the reply of every pair before it returns.
     *
     * When a reply misses the deadline, all replies keep their values and get the status Unanswered. In a rest they
     * keep their status, too. Null pairs are skipped.
     */
    virtual void sendCommandCombos(QList<CommandCombo *> combos);

    /// In circular mode a module sends its values unasked, again and again; false leaves that mode.
    void setCircularMode(bool on);
    bool circularMode() const;

    const Statistics &statistics() const;

    /// True from a missed deadline until the module answers again.
    bool isSilenced() const;

protected:
    /**
     * Sends one request to the module and stores its answer in \a reply.
     *
     * \param deadline of the whole exchange
     * \return false when no answer came before \a deadline; all replies of the exchange are then discarded
     */
    virtual bool transact(const Command &request, Command &reply, const QDeadlineTimer &deadline) = 0;

    /// The monotonic clock for deadlines, silence and rests, ns.
    virtual qint64 nowNs() const;

    /**
     * Adds an exchange of \a requests requests to the statistics; \a durationNs is how long the caller waited, ns.
     *
     * Like setSilenced(), only called by channels that override sendCommandCombos() as a whole.
     */
    void countExchange(int requests, bool isAnswered, qint64 durationNs);
    void setSilenced(bool isSilenced); ///< Sets what isSilenced() returns.

private:
    Q_DISABLE_COPY(CommandHandlerInterface)

    /// A caller that was rejected in a rest.
    struct Waiting
    {
        const CommandCombo *caller; // its first pair, compared only and never dereferenced
        qint64 lastAskedNs;
    };

    bool isAllowed(const QList<CommandCombo *> &combos, qint64 now);
    bool isTurnOf(const CommandCombo *caller, qint64 now);
    bool exchange(const QList<CommandCombo *> &combos, qint64 startNs);
    void refillAllowance(qint64 now);

    bool m_circularMode = false;
    bool m_isSilenced = false;
    qint64 m_nextTryNs = 0; // while silenced
    qint64 m_allowanceNs = qint64{busyAllowanceMs} * 1000000;
    qint64 m_allowanceTimeNs = 0;
    QVector<Waiting> m_waiting; // in the order of their first rejected call
    Statistics m_statistics;
};
