#pragma once

#include "modules/modbus/LineState.h"
#include "modules/modbus/UnitSurvey.h"

#include <map>
#include <optional>

/**
 * Reads all values of the devices on a line ahead, as far as the line has time.
 *
 * While the line is asked for values it takes a tenth of the time at most, and none while a device that is asked has no
 * answer yet or is about to be tried again after a fault. Else it reads ten times a second at most, and each value once;
 * what was never read comes faster. Of the thread of the line.
 */
class LineSurvey
{
public:
    struct Turn
    {
        int unit = 0;
        int index = 0; ///< of the request of the device's survey
        RegisterSpan request;
    };

    /// What the rounds have to do.
    struct Queue
    {
        bool isAsked = false;   ///< there are values to be read in rounds
        bool isAwaited = false; ///< and the first answer for some of them is due
        qint64 retryNs = 0;     ///< when a device that is asked and silent is tried again; far away when there is none
    };

    explicit LineSurvey(LineCost cost);

    /// With the line locked: the request to be read now; nothing until \a dueNs at the earliest, which it lowers.
    std::optional<Turn> next(LineState *line, const std::map<int, QVector<RegisterSpan>> &refused, const Queue &queue,
                             qint64 nowNs, qint64 *dueNs);

    /// With the line locked: what reading \a turn from \a begunNs to \a nowNs has brought.
    void publish(LineState *line, const Turn &turn, const ConnectionTrouble &trouble, const QVector<quint16> &words,
                 qint64 begunNs, qint64 nowNs);

    /// With the line locked: how a round of \a unit has ended.
    void noteRound(int unit, bool isAnswered, qint64 nowNs);

    /// Spans of \a unit that are only read when they are asked for. Needs no lock: only the line's thread changes them.
    QVector<RegisterSpan> apart(int unit) const;

    /// Forgets what is known of the devices: after a reconnection they may be others.
    void forget();

private:
    struct Surveyed
    {
        int usesVersion = 0;
        UnitSurvey survey;
        QVector<RegisterSpan> apart;
        qint64 triedNs = 0;
        qint64 tookNs = 0;
    };

    /// The survey of a device, brought up to date; null when nothing is to be read ahead of it.
    Surveyed *surveyOf(int number, const LineUnit &unit, const QVector<RegisterSpan> &refused);
    static bool isAllowed(const Surveyed &surveyed, const LineUnit &unit, const Queue &queue, qint64 nowNs);

    const LineCost m_cost;
    std::map<int, Surveyed> m_units;
    qint64 m_nextNs = 0; // not before
};
