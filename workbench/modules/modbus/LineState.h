#pragma once

#include "modules/modbus/ModbusConnection.h"
#include "modules/modbus/ModbusLink.h"

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
    quint64 number = 0;              ///< of the newest answer, counted from 1
    quint64 lastGiven = 0;           ///< number of the answer that was given out last
};

/// One device on the line.
struct LineUnit
{
    std::vector<LineGroup> groups;
    int users = 0;
    ConnectionTrouble trouble;
    int failures = 0; ///< in a row
    qint64 nextTryNs = 0;
    qint64 lastRoundNs = 0;     ///< when the last complete round ended; 0 before the first one
    qint64 roundDurationNs = 0; ///< from the end of the round before to the end of the last one
    double roundsPerSecond = 0;
    qint64 countedSinceNs = 0;
    int counted = 0;
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
    std::map<int, LineUnit> units;
};

/// The main function of a line's thread.
void runLine(const std::shared_ptr<LineState> &line);
