#include "modules/modbus/UnitSurvey.h"

#include "modules/modbus/ModbusClock.h"

#include <algorithm>
#include <limits>

UnitSurvey::UnitSurvey(const SurveyedSpans &spans, LineCost cost, const QVector<RegisterSpan> &refused)
{
    const ReadPlan plan(spans.ahead, cost, refused + spans.apart);
    QVector<QVector<RegisterSpan>> spansOfRequests(plan.requests().size());
    for (int span = 0; span < spans.ahead.size(); ++span) {
        QVector<RegisterSpan> &ofRequest = spansOfRequests[plan.requestOf(span)];
        if (!ofRequest.contains(spans.ahead.at(span))) {
            ofRequest.append(spans.ahead.at(span));
        }
    }
    for (QVector<RegisterSpan> &ofRequest : spansOfRequests) {
        std::sort(ofRequest.begin(), ofRequest.end(),
                  [](const RegisterSpan &left, const RegisterSpan &right) { return left.address < right.address; });
        m_items.append(itemOf(ofRequest));
    }
}

UnitSurvey::Item UnitSurvey::itemOf(const QVector<RegisterSpan> &spans)
{
    Item item;
    item.request = spans.constFirst();
    int end = 0;
    for (const RegisterSpan &span : spans) {
        end = std::max(end, span.end());
    }
    item.request.count = static_cast<quint16>(end - item.request.address);
    item.spans = spans;
    return item;
}

int UnitSurvey::next(const QVector<RegisterSpan> &asked, bool isInTrouble, qint64 nowNs, qint64 *dueNs) const
{
    *dueNs = std::numeric_limits<qint64>::max();
    int chosen = none;
    const bool hasSuspect =
        std::any_of(m_items.cbegin(), m_items.cend(), [](const Item &item) { return item.isSuspect; });
    for (int index = 0; index < m_items.size(); ++index) {
        const Item &item = m_items.at(index);
        if ((isInTrouble || hasSuspect) && item.isTrusted) {
            return index;
        }
        const bool isRead = std::all_of(item.spans.cbegin(), item.spans.cend(),
                                        [&asked](const RegisterSpan &span) { return asked.contains(span); });
        if (isRead) {
            continue;
        }
        const qint64 intervalNs = item.answeredNs == 0 || isInTrouble ? 0 : intervalMs * modbusNsPerMs;
        const qint64 itemDueNs = std::max(item.answeredNs + intervalNs, item.notBeforeNs);
        if (itemDueNs > nowNs) {
            *dueNs = std::min(*dueNs, itemDueNs);
        } else if (chosen == none || item.triedNs < m_items.at(chosen).triedNs) {
            chosen = index;
        }
    }
    if (chosen == none && isInTrouble && !m_items.isEmpty()) {
        return 0; // nothing else shows whether the device is there again
    }
    return chosen;
}

const RegisterSpan &UnitSurvey::request(int index) const
{
    return m_items.at(index).request;
}

const QVector<RegisterSpan> &UnitSurvey::spansOf(int index) const
{
    return m_items.at(index).spans;
}

bool UnitSurvey::isNew(int index) const
{
    return m_items.at(index).answeredNs == 0;
}

void UnitSurvey::noteAnswer(int index, qint64 nowNs)
{
    Item &answered = m_items[index];
    answered.isSuspect = false;
    answered.notBeforeNs = 0;
    answered.triedNs = nowNs;
    answered.answeredNs = nowNs;
    noteRound(true, nowNs);
    for (Item &item : m_items) {
        item.isTrusted = false;
    }
    answered.isTrusted = true;
}

void UnitSurvey::noteRefusal(int index, qint64 nowNs)
{
    m_items[index].isSuspect = false;
    noteRound(true, nowNs);
    if (m_items.at(index).spans.size() > 1) {
        divide(index);
        return;
    }
    Item &refused = m_items[index];
    refused.triedNs = nowNs;
    refused.answeredNs = nowNs;
    refused.notBeforeNs = nowNs + refusalPauseMs * modbusNsPerMs;
    refused.isTrusted = false;
}

bool UnitSurvey::noteMiss(int index, bool isAsked, qint64 nowNs)
{
    const bool hasTrusted =
        std::any_of(m_items.cbegin(), m_items.cend(), [](const Item &item) { return item.isTrusted; });
    Item &missed = m_items[index];
    missed.triedNs = nowNs;
    if (isAsked || (hasTrusted && !missed.isTrusted)) {
        missed.isSuspect = true;
        return false;
    }
    missed.isTrusted = false; // the others have their turns
    noteRound(false, nowNs);
    return true;
}

void UnitSurvey::noteRound(bool isAnswered, qint64 nowNs)
{
    for (Item &item : m_items) {
        if (item.isSuspect && isAnswered) {
            item.notBeforeNs = nowNs + missPauseMs * modbusNsPerMs;
        }
        item.isSuspect = false;
    }
}

void UnitSurvey::divide(int index)
{
    const QVector<RegisterSpan> spans = m_items.at(index).spans;
    const int half = spans.size() / 2;
    m_items[index] = itemOf(spans.mid(half));
    m_items.insert(index, itemOf(spans.mid(0, half)));
}
