#include "logging/MessageLog.h"

#include <QMutex>
#include <QMutexLocker>
#include <QThread>

#include <algorithm>
#include <iterator>

namespace
{

/// What all logs share; guarded by the mutex.
struct Listening
{
    QMutex mutex;
    QVector<MessageLog *> logs;
    QtMessageHandler next = nullptr; // the handler that was there before
    bool isInstalled = false;
};

Listening &listening()
{
    static Listening shared;
    return shared;
}

} // namespace

int severity(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return 0;
    case QtInfoMsg:
        return 1;
    case QtWarningMsg:
        return 2;
    case QtCriticalMsg:
        return 3;
    case QtFatalMsg:
        break;
    }
    return 4;
}

MessageLog::MessageLog(QObject *parent) : QObject(parent)
{
    Listening &shared = listening();
    {
        const QMutexLocker locker(&shared.mutex);
        shared.logs.append(this);
    }
    if (!shared.isInstalled) {
        const QtMessageHandler previous = qInstallMessageHandler(handle);
        const QMutexLocker locker(&shared.mutex);
        shared.next = previous;
        shared.isInstalled = true;
    }
    connect(&m_deliveryTimer, &QTimer::timeout, this, &MessageLog::deliver);
    m_deliveryTimer.start(deliveryIntervalMs);
}

MessageLog::~MessageLog()
{
    Listening &shared = listening();
    {
        const QMutexLocker locker(&shared.mutex);
        shared.logs.removeOne(this);
        if (!shared.logs.isEmpty()) {
            return;
        }
    }
    const QtMessageHandler current = qInstallMessageHandler(shared.next);
    if (current != handle) {
        // Another handler was installed after this one and still calls it: it stays in the chain and only forwards.
        qInstallMessageHandler(current);
        return;
    }
    const QMutexLocker locker(&shared.mutex);
    shared.isInstalled = false;
}

void MessageLog::setMarker(const std::function<bool()> &marker)
{
    const QMutexLocker locker(&listening().mutex);
    m_marker = marker;
}

void MessageLog::note(QtMsgType type, const QString &text)
{
    const QMutexLocker locker(&listening().mutex);
    m_waiting.push_back({QTime::currentTime(), type, QStringLiteral("workbench"), text, false});
}

void MessageLog::deliver()
{
    std::deque<LogMessage> fetched;
    {
        const QMutexLocker locker(&listening().mutex);
        fetched.swap(m_waiting);
    }
    if (fetched.empty()) {
        return;
    }
    QVector<LogMessage> messages;
    messages.reserve(int(fetched.size()));
    std::move(fetched.begin(), fetched.end(), std::back_inserter(messages));
    emit arrived(messages);
}

void MessageLog::handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    Listening &shared = listening();
    QtMessageHandler next = nullptr;
    {
        LogMessage message = {QTime::currentTime(), type, QString::fromUtf8(context.category), text, false};
        const QMutexLocker locker(&shared.mutex);
        for (MessageLog *const log : qAsConst(shared.logs)) {
            message.isMarked = log->m_marker && log->thread() == QThread::currentThread() && log->m_marker();
            log->m_waiting.push_back(message);
            if (log->m_waiting.size() > maximumWaiting) {
                log->m_waiting.pop_front();
            }
        }
        next = shared.next;
    }
    // Without the lock: the next handler may be slow, or log something itself.
    if (next != nullptr) {
        next(type, context, text);
    }
}
