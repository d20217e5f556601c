#pragma once

#include "modules/modbus/ConnectionSettings.h"
#include "modules/modbus/ConnectionTrouble.h"
#include "modules/modbus/UnitSurvey.h"

#include <QVector>

#include <memory>

struct LineState;

/**
 * One line to Modbus devices, shared by all devices that are reached over it, with a thread of its own that connects,
 * connects again, resolves names and asks.
 *
 * The thread asks every device over and over, in rounds, for all spans that were exchanged within the last second. A
 * round reads them by as few requests as is cheaper, and its answers are published together or not at all: the spans of
 * one group are always of the same round. After a fault a device counts as silent until a round succeeds; it is tried
 * again at once, then after pauses of up to a second.
 *
 * Beside that the thread surveys the devices that were added: it reads their values ahead when the line has time, so that
 * a group has an answer when it is asked for the first time. One answer of the survey that is recent and holds all spans
 * of a group is given out until the first round has one. Spans that the survey has read by several requests were read at
 * different times and are no answer to a group: they only replace values of other requests where nothing else is known.
 *
 * GUI thread. No function and no destructor waits for the line; the thread ends by itself when what it does ends, also
 * after the program's end was reached.
 */
class ModbusConnection
{
public:
    static constexpr int expiryMs = 1000;       ///< a group that was not exchanged for this long is no longer asked
    static constexpr int surveyLimitMs = 2000;  ///< an answer of the survey that is older is given out no more
    static constexpr int longestPauseMs = 1000; ///< between two attempts to reach a silent device

    /// What a round brought for one span: words, or the code of the exception by which the device refused it.
    struct SpanAnswer
    {
        QVector<quint16> words;
        int exception = 0;
    };

    /// What one round brought for a group, in the order of its spans.
    struct Answer
    {
        QVector<SpanAnswer> spans;
        qint64 timeNs = 0; ///< when the round was complete, ns of the monotonic clock
    };

    /// How a device is doing.
    struct DeviceState
    {
        bool isConnected = false;     ///< the line is; on a serial line, the port is open
        bool isKnownToAnswer = false; ///< the device has answered what was read last, be it by the survey
        ConnectionTrouble trouble;    ///< of what is read now; a device that nobody reads has none of its own
        int refusal = 0;              ///< exception by which the device refuses a value that is asked; 0 for none
        qint64 troubleNs = 0;         ///< when it was found, of the monotonic clock
        qint64 ageMs = -1;            ///< of the oldest of the newest answers to what is asked; -1 before the first one
        double answersPerSecond = 0;  ///< complete rounds
    };

    enum class Outcome
    {
        Answered, ///< with the newest answer there is
        Awaited,  ///< there is no answer yet
        Silent    ///< the device or the line is in trouble
    };

    /// The connection for the line of \a settings, a new one if there is none.
    static std::shared_ptr<ModbusConnection> of(const ConnectionSettings &settings);

    ~ModbusConnection();
    ModbusConnection(const ModbusConnection &) = delete;
    ModbusConnection &operator=(const ModbusConnection &) = delete;

    /// A device that may be asked for, with what is read of it ahead. Its groups and its state are kept until the last of
    /// those who have added it remove it. Returns a number for that.
    int addUnit(int unit, const SurveyedSpans &spans = {});
    void removeUnit(int unit, int use);

    /**
     * The newest answer to the group of \a spans, which all have to be readable.
     *
     * Waits for an answer that is newer than the last one it gave for this group, if one may come that soon: at most
     * \a waitNs; at most \a firstWaitNs when the group was not exchanged within the last second. A silent device is not
     * waited for.
     *
     * \param answer also gets, unless there is an answer, what is known of a group that has had none: the last answer
     *        to each span, without words where there is none
     * \param waitedNs what it has waited; \a wasFirst says for which of the two
     */
    Outcome newest(int unit, const QVector<RegisterSpan> &spans, qint64 waitNs, qint64 firstWaitNs, Answer *answer,
                   qint64 *waitedNs, bool *wasFirst);

    DeviceState state(int unit) const;

private:
    explicit ModbusConnection(const ConnectionSettings &settings);

    const ConnectionSettings m_settings;
    const std::shared_ptr<LineState> m_line; // shared with the thread
};
