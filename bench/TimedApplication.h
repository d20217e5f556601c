#pragma once

#include <QApplication>
#include <QElapsedTimer>

/// An application that keeps the longest time for which one event held the event loop.
class TimedApplication : public QApplication
{
    Q_OBJECT

public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override;

    /// The longest since the last call, ms.
    double takeLongestMs();

    static TimedApplication *instance();

private:
    int m_depth = 0;
    qint64 m_longestNs = 0;
};
