#pragma once

#include "modules/AnswerRate.h"

#include "host/CommandHandlerInterface.h"

#include <QElapsedTimer>
#include <QObject>
#include <QStringList>
#include <QTime>
#include <QTimer>

#include <optional>
#include <vector>

class ModuleRack;

/**
 * Watches whether the modules of a rack answer, and how fast, by the counters of their channels.
 *
 * The rack is not owned and has to outlive the watch. GUI thread.
 */
class AnswerWatch : public QObject
{
    Q_OBJECT

public:
    enum class State
    {
        Unasked,   ///< nobody has asked it yet, or it is taken out
        Answering, ///< also when it is no longer asked
        Slow,      ///< it answers, and its channel turns away requests to leave time to others
        Silent     ///< its last answer did not come in time
    };

    static constexpr int pollIntervalMs = 500;

    explicit AnswerWatch(const ModuleRack *rack, QObject *parent = nullptr);

    /// Looks at all counters as they are at \a nowMs, ms of a clock that does not run backwards.
    void poll(qint64 nowMs);

    State state(int index) const;
    double answersPerSecond(int index) const; ///< of the module at place \a index
    double answersPerSecond() const;          ///< of all modules together
    QStringList silentModules() const;        ///< their keys

    /// Since when which values are not new ones, for a module that is silent; else empty.
    QString oldValues(int index) const;

    /// What is wrong with the module at place \a index, one line; empty when nothing is known to be.
    QString trouble(int index) const;

signals:
    void polled();
    void fellSilent(int index);
    /// After \a seconds without an answer.
    void answersAgain(int index, int seconds);

private:
    struct Watched
    {
        State state = State::Unasked;
        AnswerRate rate;
        CommandHandlerInterface::Statistics statistics;
        qint64 lastRestMs = 0;
        QTime silentSince; ///< local time
        qint64 silentSinceMs = 0;
    };

    void poll(int index, qint64 nowMs);
    void forget(int index);

    const ModuleRack *const m_rack; // not owned
    std::vector<Watched> m_watched;
    QElapsedTimer m_clock;
    QTimer m_timer;
};
