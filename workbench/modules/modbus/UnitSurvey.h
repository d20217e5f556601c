#pragma once

#include "modules/modbus/ReadPlan.h"
#include "modules/modbus/RegisterSpan.h"

#include <QVector>

/// Which values of a device are read ahead, so that each has an answer when it is asked for the first time.
struct SurveyedSpans
{
    QVector<RegisterSpan> ahead; ///< read now and then
    QVector<RegisterSpan> apart; ///< never read unasked, neither by themselves nor in a gap between others
};

/**
 * Decides which request of the survey of one device comes next.
 *
 * Each request is due a second after it was answered. A request that the device refuses is halved until the values that
 * the device does not have are found; these are tried rarely. So is a request that gets no answer while the device answers
 * others. What is read next after a missing answer shows which of the two it is: a round of what is asked or, when
 * nothing is asked, the request that was answered last.
 *
 * Pure: the caller's clock, ns.
 */
class UnitSurvey
{
public:
    static constexpr int intervalMs = 1000;      ///< between two answers to one request
    static constexpr int refusalPauseMs = 60000; ///< before the device is asked again for what it has refused
    static constexpr int missPauseMs = 600000;   ///< the same for what stays unanswered, which holds the line up
    static constexpr int none = -1;              ///< no request

    UnitSurvey() = default;
    /// \param refused requests that the device is known to refuse
    UnitSurvey(const SurveyedSpans &spans, LineCost cost, const QVector<RegisterSpan> &refused);

    /// Index of the request that is due; \c none until \a dueNs, which is far away when there is no request at all.
    /// A request for nothing but \a asked, which is read anyway, is not due. While the device \a isInTrouble the request
    /// that was answered last is due at once, and without one every request in turn.
    int next(const QVector<RegisterSpan> &asked, bool isInTrouble, qint64 nowNs, qint64 *dueNs) const;

    const RegisterSpan &request(int index) const;
    const QVector<RegisterSpan> &spansOf(int index) const;
    bool isNew(int index) const; ///< Whether it was never answered.

    void noteAnswer(int index, qint64 nowNs);
    void noteRefusal(int index, qint64 nowNs);

    /**
     * The request \a index stayed without an answer.
     *
     * \param isAsked whether a round follows, which shows whose fault it is
     * \return whether it is the device that does not answer
     */
    bool noteMiss(int index, bool isAsked, qint64 nowNs);

    /// How a round of the device ended, which tells whose fault the last miss was.
    void noteRound(bool isAnswered, qint64 nowNs);

private:
    struct Item
    {
        RegisterSpan request;
        QVector<RegisterSpan> spans; // in it, by address
        qint64 triedNs = 0;
        qint64 answeredNs = 0;
        qint64 notBeforeNs = 0;
        bool isSuspect = false; // missed, and nothing was answered since
        bool isTrusted = false; // answered last
    };

    static Item itemOf(const QVector<RegisterSpan> &spans);
    void divide(int index);

    QVector<Item> m_items;
};
