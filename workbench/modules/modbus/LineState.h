#pragma once

#include "modules/modbus/ModbusConnection.h"
#include "modules/modbus/ModbusLink.h"

#include <QHash>

#include <condition_variable>
#include <map>
#include <mutex>
#include <vector>

/// Spans whose answers are wanted together.
struct LineGroup
{
    QVector<RegisterSpan> spans;
    qint64 lastAskedNs = 0;
    ModbusConnection::Answer newest; ///< no spans while there is none
    quint64 number = 0;              ///< of the newest answer of a round, counted from 1; 0 for one of the survey
    quint64 lastGiven = 0;           ///< number of the answer that was given out last

    bool isAsked(qint64 nowNs) const; ///< Whether it was exchanged lately.
};

/// The last answer for a span, by a round or by the survey.
struct KnownAnswer
{
    ModbusConnection::SpanAnswer answer;
    qint64 timeNs = 0; ///< of the request, which tells requests from each other; 0 for one of an earlier connection
};

/// One device on the line.
struct LineUnit
{
    std::vector<LineGroup> groups;
    std::map<int, SurveyedSpans> uses; ///< by the number of the use
    int usesVersion = 0;               ///< another one after each change of uses
    QHash<quint64, KnownAnswer> known; ///< by keyOf() the span
    bool isKnownToAnswer = false;      ///< its last request was answered
    ConnectionTrouble trouble;
    qint64 troubleNs = 0; ///< when it was found
    int failures = 0;     ///< in a row
    qint64 nextTryNs = 0;
    qint64 lastRoundNs = 0;     ///< when the last complete round ended; 0 before the first one
    qint64 roundDurationNs = 0; ///< from the end of the round before to the end of the last one
    double roundsPerSecond = 0;
    qint64 countedSinceNs = 0;
    int counted = 0;

    static quint64 keyOf(const RegisterSpan &span);

    bool isAsked(qint64 nowNs) const;
    bool isSurveyed() const;
    QVector<RegisterSpan> askedSpans(qint64 nowNs) const;

    /// The last answer to each of \a spans, without words where there is none. Its time is 0 unless all came by one
    /// request of this connection.
    ModbusConnection::Answer lastAnswers(const QVector<RegisterSpan> &spans) const;

    void noteFailure(const ConnectionTrouble &found, qint64 nowNs);
    void noteSuccess();

    /// The connection has ended: what was answered is old.
    void dropAnswers();
};

/**
 * What the thread of a line and the GUI thread share. Everything but the settings and the signal is guarded by the mutex.
 *
 * Owned by both, so that neither has to wait for the other's end.
 */
struct LineState
{
    explicit LineState(const ConnectionSettings &lineSettings) : settings(lineSettings) {}

    const ConnectionSettings settings;
    WakeSignal stop; ///< ends a connection attempt

    mutable std::mutex mutex;
    std::condition_variable wake; ///< for the thread: there is something to do
    std::condition_variable news; ///< for the GUI thread: an answer, or trouble
    bool isEnding = false;
    bool isConnected = false;
    ConnectionTrouble trouble{ConnectionTrouble::Kind::Connecting, 0, {}}; ///< of the line as a whole
    qint64 troubleNs = 0;                                                  ///< when it was found
    std::map<int, LineUnit> units;
    int lastUse = 0;
};

/// How long to wait before the next attempt after so many in a row have failed: the first one comes at once, the next ones
/// after pauses that double.
qint64 linePauseNs(int failures, int longestMs);

/// Whether a device says by this exception that it has no such value. After any other it may answer later.
bool isRefusal(const ConnectionTrouble &trouble);

/// The main function of a line's thread.
void runLine(const std::shared_ptr<LineState> &line);
