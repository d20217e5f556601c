// What the thread of a line does.

#include "modules/modbus/LineState.h"
#include "modules/modbus/LineSurvey.h"
#include "modules/modbus/ModbusClock.h"
#include "modules/modbus/ReadPlan.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <optional>
#include <utility>

namespace
{

using Kind = ConnectionTrouble::Kind;
using SpanAnswers = QVector<ModbusConnection::SpanAnswer>;

/// Rounds begin no faster than this after each other: a network that is faster carries nothing that could be shown.
constexpr qint64 minimumRoundNs = modbusNsPerMs;
constexpr qint64 idleCheckNs = 250 * modbusNsPerMs;
constexpr qint64 rateIntervalNs = 1000 * modbusNsPerMs;
constexpr int longestConnectPauseMs = 500; // an attempt takes up to ModbusLink::connectTimeoutMs besides
constexpr double nsPerSecond = 1e9;

/// The thread's own side of a line.
class LineThread
{
public:
    explicit LineThread(std::shared_ptr<LineState> line)
        : m_line(std::move(line))
        , m_link(ModbusLink::of(m_line->settings, m_line->stop, [this] { noteEnd(); }))
        , m_cost(LineCost::of(m_line->settings))
        , m_survey(m_cost)
    {
    }

    void run()
    {
        while (!isEnding()) {
            if (!m_link->isOpen()) {
                connect();
            } else if (const std::optional<Turn> turn = nextTurn()) {
                if (turn->survey) {
                    readAhead(*turn->survey);
                } else {
                    askUnit(turn->unit);
                }
            }
        }
        m_link->close();
    }

private:
    struct Turn
    {
        int unit = 0;
        std::optional<LineSurvey::Turn> survey; // else it is a round of the unit
    };

    struct Round
    {
        ConnectionTrouble trouble;
        SpanAnswers answers; // of the round's spans
    };

    bool isEnding() const
    {
        const std::lock_guard<std::mutex> lock(m_line->mutex);
        return m_line->isEnding;
    }

    /// Called by another thread: the connection was ended from the other side.
    void noteEnd()
    {
        {
            const std::lock_guard<std::mutex> lock(m_line->mutex);
            m_hasEnd = true;
        }
        m_line->wake.notify_all();
    }

    void connect()
    {
        {
            std::unique_lock<std::mutex> lock(m_line->mutex);
            m_line->wake.wait_for(lock, std::chrono::nanoseconds(linePauseNs(m_failures, longestConnectPauseMs)),
                                  [this] { return m_line->isEnding; });
            if (m_line->isEnding) {
                return;
            }
            m_hasEnd = false;
        }
        m_refused.clear(); // another device may be there now
        const ConnectionTrouble trouble = m_link->open();
        // A connection that breaks at the first request is no better than none, so only a round ends the row.
        ++m_failures;
        {
            const std::lock_guard<std::mutex> lock(m_line->mutex);
            const qint64 nowNs = modbusNowNs();
            m_line->isConnected = m_link->isOpen();
            m_line->trouble = trouble;
            m_line->troubleNs = nowNs;
            for (auto &entry : m_line->units) {
                LineUnit &unit = entry.second;
                if (trouble.kind != Kind::None) {
                    unit.dropAnswers();
                } else if (!unit.isAsked(nowNs) && !unit.isSurveyed()) {
                    unit.trouble = {}; // else it is silent until it has answered
                }
            }
            if (trouble.kind != Kind::None) {
                m_survey.forget();
            }
        }
        m_line->news.notify_all();
    }

    /// What is to be read now; nothing when the line has to be looked at again, after a wait if need be.
    std::optional<Turn> nextTurn()
    {
        std::unique_lock<std::mutex> lock(m_line->mutex);
        const qint64 nowNs = modbusNowNs();
        qint64 dueNs = nowNs + idleCheckNs;
        LineSurvey::Queue queue;
        const std::optional<int> unit = nextUnit(nowNs, &dueNs, &queue);
        if (const auto survey = m_survey.next(m_line.get(), m_refused, queue, nowNs, &dueNs)) {
            return Turn{survey->unit, survey};
        }
        if (unit) {
            return Turn{*unit, {}};
        }
        if (!m_hasEnd && !m_line->isEnding) {
            m_line->wake.wait_for(lock, std::chrono::nanoseconds(dueNs - nowNs));
        }
        lock.unlock();
        publishLineTrouble(m_link->check());
        return {};
    }

    /// The device whose round is due; none until \a dueNs at the earliest, which it lowers. With the mutex locked.
    std::optional<int> nextUnit(qint64 nowNs, qint64 *dueNs, LineSurvey::Queue *queue)
    {
        std::optional<int> chosen;
        qint64 longestAgoNs = nowNs + 1;
        queue->retryNs = std::numeric_limits<qint64>::max();
        for (const auto &entry : m_line->units) {
            const LineUnit &unit = entry.second;
            if (!unit.isAsked(nowNs)) {
                continue;
            }
            const qint64 begunNs = m_begunNs[entry.first];
            const qint64 unitDueNs = std::max(unit.nextTryNs, begunNs + minimumRoundNs);
            *dueNs = std::min(*dueNs, unitDueNs);
            queue->isAsked = true;
            if (unit.trouble.kind != Kind::None) {
                queue->retryNs = std::min(queue->retryNs, unitDueNs);
            }
            if (unitDueNs > nowNs) {
                continue;
            }
            queue->isAwaited = queue->isAwaited ||
                               std::any_of(unit.groups.cbegin(), unit.groups.cend(), [nowNs](const LineGroup &group) {
                                   return group.number == 0 && group.isAsked(nowNs);
                               });
            if (begunNs < longestAgoNs) {
                chosen = entry.first;
                longestAgoNs = begunNs;
            }
        }
        return chosen;
    }

    void publishLineTrouble(const ConnectionTrouble &trouble)
    {
        if (trouble.kind == Kind::None) {
            return;
        }
        {
            const std::lock_guard<std::mutex> lock(m_line->mutex);
            m_line->isConnected = false;
            m_line->trouble = trouble;
            m_line->troubleNs = modbusNowNs();
            for (auto &entry : m_line->units) {
                entry.second.dropAnswers();
                entry.second.trouble = trouble;
                entry.second.troubleNs = m_line->troubleNs;
            }
            m_survey.forget();
        }
        m_line->news.notify_all();
    }

    QVector<RegisterSpan> spansOf(int number) const
    {
        const std::lock_guard<std::mutex> lock(m_line->mutex);
        const auto found = m_line->units.find(number);
        return found == m_line->units.end() ? QVector<RegisterSpan>() : found->second.askedSpans(modbusNowNs());
    }

    void askUnit(int number)
    {
        m_begunNs[number] = modbusNowNs();
        const QVector<RegisterSpan> spans = spansOf(number);
        if (spans.isEmpty()) {
            return; // nobody asks any more, and a round without a request shows nothing of the device
        }
        const Round round = readRound(number, spans);
        {
            const std::lock_guard<std::mutex> lock(m_line->mutex);
            const auto found = m_line->units.find(number);
            m_line->isConnected = m_link->isOpen();
            if (found != m_line->units.end()) {
                publish(spans, round, &found->second);
                m_survey.noteRound(number, round.trouble.kind == Kind::None, modbusNowNs());
            }
        }
        m_line->news.notify_all();
    }

    void readAhead(const LineSurvey::Turn &turn)
    {
        const qint64 begunNs = modbusNowNs();
        QVector<quint16> words;
        const ConnectionTrouble trouble = m_link->read(turn.unit, turn.request, &words);
        {
            const std::lock_guard<std::mutex> lock(m_line->mutex);
            m_line->isConnected = m_link->isOpen();
            m_survey.publish(m_line.get(), turn, trouble, words, begunNs, modbusNowNs());
        }
        if (trouble.kind == Kind::None || isRefusal(trouble)) {
            m_failures = 0;
        }
        m_line->news.notify_all();
    }

    Round readRound(int number, const QVector<RegisterSpan> &spans)
    {
        const ReadPlan plan(spans, m_cost, m_refused[number] + m_survey.apart(number));
        Round round;
        round.answers.resize(spans.size());
        for (int index = 0; index < plan.requests().size(); ++index) {
            const RegisterSpan &request = plan.requests().at(index);
            QVector<quint16> words;
            round.trouble = m_link->read(number, request, &words);
            if (isRefusal(round.trouble)) {
                noteRefusal(number, request);
                words.clear();
            } else if (round.trouble.kind != Kind::None) {
                return round;
            }
            for (int span = 0; span < spans.size(); ++span) {
                if (plan.requestOf(span) != index) {
                    continue;
                }
                if (words.isEmpty() && !(request == spans.at(span))) {
                    return readAlone(number, spans); // something else in the joined request was refused
                }
                round.answers[span].words = words.mid(plan.offsetOf(span), spans.at(span).count);
                round.answers[span].exception = words.isEmpty() ? round.trouble.number : 0;
            }
        }
        round.trouble = {};
        return round;
    }

    void noteRefusal(int number, const RegisterSpan &request)
    {
        if (!m_refused[number].contains(request)) {
            m_refused[number].append(request);
        }
    }

    /// A round with one request for each span.
    Round readAlone(int number, const QVector<RegisterSpan> &spans)
    {
        Round round;
        round.answers.resize(spans.size());
        for (int span = 0; span < spans.size(); ++span) {
            round.trouble = m_link->read(number, spans.at(span), &round.answers[span].words);
            if (isRefusal(round.trouble)) {
                noteRefusal(number, spans.at(span));
                round.answers[span].exception = round.trouble.number;
            } else if (round.trouble.kind != Kind::None) {
                return round;
            }
        }
        round.trouble = {};
        return round;
    }

    /// With the mutex locked.
    void publish(const QVector<RegisterSpan> &spans, const Round &round, LineUnit *unit)
    {
        const qint64 nowNs = modbusNowNs();
        if (round.trouble.kind != Kind::None) {
            unit->noteFailure(round.trouble, nowNs);
            return;
        }
        m_failures = 0;
        unit->noteSuccess();
        for (int index = 0; index < spans.size(); ++index) {
            unit->known.insert(LineUnit::keyOf(spans.at(index)), {round.answers.at(index), nowNs});
        }
        for (LineGroup &group : unit->groups) {
            SpanAnswers answers;
            for (const RegisterSpan &span : qAsConst(group.spans)) {
                const int index = spans.indexOf(span);
                if (index >= 0) {
                    answers.append(round.answers.at(index));
                }
            }
            if (answers.size() == group.spans.size()) { // else the group came during the round
                group.newest = {answers, nowNs};
                ++group.number;
            }
        }
        unit->roundDurationNs = unit->lastRoundNs > 0 ? nowNs - unit->lastRoundNs : 0;
        unit->lastRoundNs = nowNs;
        count(unit, nowNs);
    }

    static void count(LineUnit *unit, qint64 nowNs)
    {
        if (unit->countedSinceNs == 0 || nowNs - unit->countedSinceNs > 2 * rateIntervalNs) {
            unit->countedSinceNs = nowNs;
            unit->counted = 0;
            unit->roundsPerSecond = 0;
            return;
        }
        ++unit->counted;
        const qint64 countedNs = nowNs - unit->countedSinceNs;
        if (countedNs >= rateIntervalNs) {
            unit->roundsPerSecond = unit->counted * nsPerSecond / static_cast<double>(countedNs);
            unit->countedSinceNs = nowNs;
            unit->counted = 0;
        }
    }

    const std::shared_ptr<LineState> m_line;
    bool m_hasEnd = false; // guarded by the line's mutex
    const std::unique_ptr<ModbusLink> m_link;
    const LineCost m_cost;
    LineSurvey m_survey;                            // used with the mutex locked, but for what only this thread changes
    int m_failures = 0;                             // to bring the line into use, in a row
    std::map<int, qint64> m_begunNs;                // last round of each device
    std::map<int, QVector<RegisterSpan>> m_refused; // requests that each device has refused
};

} // namespace

void runLine(const std::shared_ptr<LineState> &line)
{
    LineThread(line).run();
}
