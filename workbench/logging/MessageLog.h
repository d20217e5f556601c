#pragma once

#include <QMessageLogContext>
#include <QObject>
#include <QString>
#include <QTime>
#include <QTimer>
#include <QVector>

#include <deque>
#include <functional>

/// One message that went to Qt's logger.
struct LogMessage
{
    QTime time; ///< local time of its arrival
    QtMsgType type = QtDebugMsg;
    QString category;
    QString text;
    bool isMarked = false; ///< what the log's marker said when it arrived
    QString path = {};     ///< of a file that is named in the text, see namedPath(); set by a MessageModel
};
Q_DECLARE_TYPEINFO(LogMessage, Q_MOVABLE_TYPE);

/// 0 for debug lines up to 4 for a fatal message; the numbers of QtMsgType are in no such order.
int severity(QtMsgType type);

/**
 * Collects the messages of Qt's logger for as long as it lives, and delivers them in batches.
 *
 * Messages may come from any thread and at any moment: they are only queued, and forwarded to the previous handler. The
 * batches are delivered on the thread of this object by a timer, so that a source of many messages costs
 * its listeners one call in each delivery interval. The queue is bounded: the oldest are dropped.
 */
class MessageLog : public QObject
{
    Q_OBJECT

public:
    static constexpr int deliveryIntervalMs = 100;
    static constexpr int maximumWaiting = 2000;

    explicit MessageLog(QObject *parent = nullptr);
    ~MessageLog() override;

    /// \a marker is asked about every message of this object's thread when it arrives; it must not log anything itself.
    void setMarker(const std::function<bool()> &marker);

    /// Adds a message of the workbench's own, which is not sent to Qt's logger. On the thread of this object.
    void note(QtMsgType type, const QString &text);

    /// Hands on at once what has been noted so far.
    void deliver();

signals:
    /// The oldest first; never empty.
    void arrived(const QVector<LogMessage> &messages);

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text);

    std::deque<LogMessage> m_waiting; // guarded by a mutex that all logs share
    std::function<bool()> m_marker;
    QTimer m_deliveryTimer;
};
