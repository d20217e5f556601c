#include "modules/modbus/LineState.h"

#include "modules/modbus/ModbusClock.h"

#include <algorithm>

namespace
{

constexpr int firstPauseMs = 50;
constexpr int lastRefusal = 4;

} // namespace

bool LineGroup::isAsked(qint64 nowNs) const
{
    return nowNs - lastAskedNs <= ModbusConnection::expiryMs * modbusNsPerMs;
}

quint64 LineUnit::keyOf(const RegisterSpan &span)
{
    return (static_cast<quint64>(span.table) << 32U) | (quint64{span.address} << 16U) | quint64{span.count};
}

bool LineUnit::isAsked(qint64 nowNs) const
{
    return std::any_of(groups.cbegin(), groups.cend(),
                       [nowNs](const LineGroup &group) { return group.isAsked(nowNs); });
}

bool LineUnit::isSurveyed() const
{
    return std::any_of(uses.cbegin(), uses.cend(), [](const auto &use) { return !use.second.ahead.isEmpty(); });
}

QVector<RegisterSpan> LineUnit::askedSpans(qint64 nowNs) const
{
    QVector<RegisterSpan> spans;
    for (const LineGroup &group : groups) {
        if (group.isAsked(nowNs)) {
            spans += group.spans;
        }
    }
    return spans;
}

ModbusConnection::Answer LineUnit::lastAnswers(const QVector<RegisterSpan> &spans) const
{
    ModbusConnection::Answer last;
    for (const RegisterSpan &span : spans) {
        const KnownAnswer answer = known.value(keyOf(span));
        const bool isFirst = last.spans.isEmpty();
        last.timeNs = isFirst || last.timeNs == answer.timeNs ? answer.timeNs : 0;
        last.spans.append(answer.answer);
    }
    return last;
}

void LineUnit::noteFailure(const ConnectionTrouble &found, qint64 nowNs)
{
    isKnownToAnswer = false;
    trouble = found;
    troubleNs = nowNs;
    ++failures;
    nextTryNs = nowNs + linePauseNs(failures, ModbusConnection::longestPauseMs);
}

void LineUnit::noteSuccess()
{
    isKnownToAnswer = true;
    trouble = {};
    failures = 0;
    nextTryNs = 0;
}

void LineUnit::dropAnswers()
{
    isKnownToAnswer = false;
    for (LineGroup &group : groups) {
        group.newest = {};
        group.number = 0;
        group.lastGiven = 0;
    }
    for (KnownAnswer &answer : known) {
        answer.timeNs = 0;
    }
}

qint64 linePauseNs(int failures, int longestMs)
{
    if (failures <= 1) {
        return 0;
    }
    const int doublings = std::min(failures - 2, 10);
    return std::min(firstPauseMs << doublings, longestMs) * modbusNsPerMs;
}

bool isRefusal(const ConnectionTrouble &trouble)
{
    return trouble.kind == ConnectionTrouble::Kind::Exception && trouble.number <= lastRefusal;
}
