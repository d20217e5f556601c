#pragma once

#include <QObject>

class QSocketNotifier;

/**
 * Turns the signals by which a terminal or a system asks a program to end into a call from the event loop.
 *
 * SIGINT, SIGTERM and SIGHUP, unless the program was started with them ignored; systems without them never ask. The
 * first one is announced by received() as soon as the event loop runs; a second one ends the program at once, as it would
 * without this. One object at a time, on the GUI thread.
 */
class EndSignals : public QObject
{
    Q_OBJECT

public:
    explicit EndSignals(QObject *parent = nullptr);
    ~EndSignals() override;

    /// The object that there is; null when there is none.
    static EndSignals *instance();

    /// 128 + the number of the signal that was announced, as shells report it; \a exitCode when there was none.
    int exitCodeOr(int exitCode) const;

signals:
    void received();

private slots:
    void read();

private:
    QSocketNotifier *m_notifier = nullptr;
    int m_received = 0; // number of the signal
};
