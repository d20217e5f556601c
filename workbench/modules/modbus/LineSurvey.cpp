#include "modules/modbus/LineSurvey.h"

#include "modules/modbus/ModbusClock.h"

#include <algorithm>

namespace
{

using Kind = ConnectionTrouble::Kind;

constexpr int restsPerTurn = 9; // pause after a request, in durations of it: the survey takes a tenth of the time
constexpr qint64 minimumPauseNs = 10 * modbusNsPerMs;
constexpr qint64 idlePauseNs = 100 * modbusNsPerMs;
/// While curves read other devices on the line, each attempt to reach a silent one delays them by a timeout.
constexpr qint64 silentPauseNs = 60000 * modbusNsPerMs;

} // namespace

LineSurvey::LineSurvey(LineCost cost) : m_cost(cost) {}

std::optional<LineSurvey::Turn> LineSurvey::next(LineState *line, const std::map<int, QVector<RegisterSpan>> &refused,
                                                 const Queue &queue, qint64 nowNs, qint64 *dueNs)
{
    Turn turn;
    Surveyed *chosen = nullptr;
    qint64 earliestNs = nowNs + idlePauseNs;
    for (const auto &entry : line->units) {
        const auto found = refused.find(entry.first);
        Surveyed *const surveyed =
            surveyOf(entry.first, entry.second, found == refused.end() ? QVector<RegisterSpan>() : found->second);
        if (surveyed == nullptr || nowNs < m_nextNs || !isAllowed(*surveyed, entry.second, queue, nowNs)) {
            continue;
        }
        const bool isInTrouble = entry.second.trouble.kind != Kind::None;
        qint64 unitDueNs = 0;
        const int index = surveyed->survey.next(entry.second.askedSpans(nowNs), isInTrouble, nowNs, &unitDueNs);
        if (index == UnitSurvey::none) {
            earliestNs = std::min(earliestNs, unitDueNs);
        } else if (chosen == nullptr || surveyed->triedNs < chosen->triedNs) {
            chosen = surveyed;
            turn = {entry.first, index, surveyed->survey.request(index)};
        }
    }
    if (chosen != nullptr) {
        return turn;
    }
    if (nowNs >= m_nextNs) {
        m_nextNs = std::min(earliestNs, nowNs + (queue.isAsked ? minimumPauseNs : idlePauseNs));
    }
    *dueNs = std::min(*dueNs, m_nextNs);
    return {};
}

LineSurvey::Surveyed *LineSurvey::surveyOf(int number, const LineUnit &unit, const QVector<RegisterSpan> &refused)
{
    Surveyed &surveyed = m_units[number];
    if (surveyed.usesVersion != unit.usesVersion) {
        SurveyedSpans spans;
        for (const auto &use : unit.uses) {
            spans.ahead += use.second.ahead;
            spans.apart += use.second.apart;
        }
        surveyed.usesVersion = unit.usesVersion;
        surveyed.survey = UnitSurvey(spans, m_cost, refused);
        surveyed.apart = spans.apart;
    }
    return unit.isSurveyed() ? &surveyed : nullptr;
}

bool LineSurvey::isAllowed(const Surveyed &surveyed, const LineUnit &unit, const Queue &queue, qint64 nowNs)
{
    const bool isInTrouble = unit.trouble.kind != Kind::None;
    if (unit.isAsked(nowNs)) {
        return !isInTrouble && !queue.isAwaited && nowNs + surveyed.tookNs < queue.retryNs;
    }
    if (queue.isAsked) {
        return !queue.isAwaited && nowNs + surveyed.tookNs < queue.retryNs &&
               (!isInTrouble || nowNs > surveyed.triedNs + silentPauseNs);
    }
    return unit.nextTryNs <= nowNs;
}

void LineSurvey::publish(LineState *line, const Turn &turn, const ConnectionTrouble &trouble,
                         const QVector<quint16> &words, qint64 begunNs, qint64 nowNs)
{
    const auto found = line->units.find(turn.unit);
    const bool isAsked = std::any_of(line->units.cbegin(), line->units.cend(),
                                     [nowNs](const auto &entry) { return entry.second.isAsked(nowNs); });
    Surveyed &surveyed = m_units[turn.unit];
    surveyed.triedNs = nowNs;
    surveyed.tookNs = nowNs - begunNs;
    const bool wasNew = surveyed.survey.isNew(turn.index);
    m_nextNs = isAsked ? nowNs + std::max(minimumPauseNs, restsPerTurn * surveyed.tookNs)
                       : std::max(nowNs, begunNs + (wasNew ? minimumPauseNs : idlePauseNs));
    if (found == line->units.end()) {
        return;
    }
    LineUnit &unit = found->second;
    if (trouble.kind != Kind::None && !isRefusal(trouble)) {
        if (surveyed.survey.noteMiss(turn.index, unit.isAsked(nowNs), nowNs)) {
            unit.noteFailure(trouble, nowNs);
        }
        return;
    }
    const QVector<RegisterSpan> &spans = surveyed.survey.spansOf(turn.index);
    if (trouble.kind == Kind::None || spans.size() == 1) {
        for (const RegisterSpan &span : spans) {
            const int offset = span.address - turn.request.address;
            unit.known.insert(LineUnit::keyOf(span), {{words.mid(offset, span.count), trouble.number}, nowNs});
        }
    }
    if (trouble.kind == Kind::None) {
        surveyed.survey.noteAnswer(turn.index, nowNs);
    } else {
        surveyed.survey.noteRefusal(turn.index, nowNs);
    }
    if (!unit.isAsked(nowNs)) {
        unit.noteSuccess();
    }
}

void LineSurvey::noteRound(int unit, bool isAnswered, qint64 nowNs)
{
    m_units[unit].survey.noteRound(isAnswered, nowNs);
}

QVector<RegisterSpan> LineSurvey::apart(int unit) const
{
    const auto found = m_units.find(unit);
    return found == m_units.end() ? QVector<RegisterSpan>() : found->second.apart;
}

void LineSurvey::forget()
{
    m_units.clear();
}
