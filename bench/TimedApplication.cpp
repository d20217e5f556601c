#include "TimedApplication.h"

#include <utility>

bool TimedApplication::notify(QObject *receiver, QEvent *event)
{
    if (m_depth > 0) {
        return QApplication::notify(receiver, event);
    }
    ++m_depth;
    QElapsedTimer timer;
    timer.start();
    const bool isHandled = QApplication::notify(receiver, event);
    m_longestNs = qMax(m_longestNs, timer.nsecsElapsed());
    --m_depth;
    return isHandled;
}

double TimedApplication::takeLongestMs()
{
    return static_cast<double>(std::exchange(m_longestNs, 0)) / 1e6;
}

TimedApplication *TimedApplication::instance()
{
    return static_cast<TimedApplication *>(QCoreApplication::instance());
}
