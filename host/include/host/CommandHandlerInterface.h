#pragma once

#include "host/CommandCombo.h"
#include "host/HostExport.h"

#include <QElapsedTimer>
#include <QList>

class QDeadlineTimer;

/**
 * The command channel of one module: sends requests and waits for the replies.
 *
 * Owned by the module, used from the GUI thread only. sendCommandCombos() blocks until all replies are in and spins no
 * event loop. A module that does not answer is waited for once per call, replyDeadlineMs at most; after a missed
 * deadline the channel answers "unanswered" at once for retryIntervalMs, so that a silent module costs its callers
 * replyDeadlineMs in each retryIntervalMs and not in every call.
 */
class HOST_EXPORT CommandHandlerInterface
{
public:
    /// What a channel has done since it was made.
    struct Statistics
    {
        quint64 exchanges = 0;        ///< calls of sendCommandCombos()
        quint64 requests = 0;         ///< requests in those calls
        quint64 unanswered = 0;       ///< requests that got no answer in time
        qint64 lastDurationNs = 0;    ///< duration of the last exchange, ns
        qint64 longestDurationNs = 0; ///< the longest so far, ns
        qint64 totalDurationNs = 0;   ///< sum over all exchanges, ns
    };

    static constexpr int replyDeadlineMs = 50;
    static constexpr int retryIntervalMs = 1000;

    CommandHandlerInterface() = default;
    virtual ~CommandHandlerInterface();

    /**
     * Sends the request of every pair in list order and fills the reply of every pair before it returns.
     *
     * A reply that did not come keeps its old value and gets the status Unanswered. Null pairs are skipped.
     */
    virtual void sendCommandCombos(QList<CommandCombo *> combos);

    /// In circular mode a module sends its values unasked, again and again; false leaves that mode.
    void setCircularMode(bool on);
    bool circularMode() const;

    const Statistics &statistics() const;

protected:
    /**
     * Brings one request to the module and its answer into \a reply.
     *
     * \return false when no answer came before \a deadline; \a reply is then left alone.
     */
    virtual bool transact(const Command &request, Command &reply, const QDeadlineTimer &deadline) = 0;

private:
    Q_DISABLE_COPY(CommandHandlerInterface)

    bool isGivenUp() const;

    bool m_circularMode = false;
    QElapsedTimer m_sinceSilence; // valid while the module is regarded as silent
    Statistics m_statistics;
};
