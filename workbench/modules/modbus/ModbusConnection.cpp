#include "modules/modbus/ModbusConnection.h"

#include "modules/modbus/LineState.h"
#include "modules/modbus/ModbusClock.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <system_error>
#include <thread>

namespace
{

constexpr double nsPerSecond = 1e9;
constexpr qint64 rateExpiryNs = 1500 * modbusNsPerMs;

/// The group of \a spans, new if it has not been exchanged for too long.
LineGroup &groupOf(LineUnit &unit, const QVector<RegisterSpan> &spans, qint64 nowNs)
{
    auto &groups = unit.groups;
    groups.erase(
        std::remove_if(groups.begin(), groups.end(), [nowNs](const LineGroup &group) { return !group.isAsked(nowNs); }),
        groups.end());
    auto found =
        std::find_if(groups.begin(), groups.end(), [&spans](const LineGroup &group) { return group.spans == spans; });
    if (found == groups.end()) {
        groups.emplace_back();
        groups.back().spans = spans;
        return groups.back();
    }
    return *found;
}

bool isSilent(const LineState &line, const LineUnit &unit)
{
    const auto kind = line.trouble.kind;
    return unit.trouble.kind != ConnectionTrouble::Kind::None ||
           (kind != ConnectionTrouble::Kind::None && kind != ConnectionTrouble::Kind::Connecting);
}

} // namespace

std::shared_ptr<ModbusConnection> ModbusConnection::of(const ConnectionSettings &settings)
{
    static std::vector<std::weak_ptr<ModbusConnection>> open;
    open.erase(std::remove_if(open.begin(), open.end(), [](const auto &connection) { return connection.expired(); }),
               open.end());
    for (const auto &candidate : open) {
        std::shared_ptr<ModbusConnection> connection = candidate.lock();
        if (connection != nullptr && connection->m_settings.isSameLine(settings)) {
            return connection;
        }
    }
    std::shared_ptr<ModbusConnection> connection(new ModbusConnection(settings));
    open.push_back(connection);
    return connection;
}

ModbusConnection::ModbusConnection(const ConnectionSettings &settings)
    : m_settings(settings), m_line(std::make_shared<LineState>(settings))
{
    const QString problem = settings.problem();
    if (!problem.isEmpty()) {
        m_line->trouble = {ConnectionTrouble::Kind::Settings, 0, problem.toStdString()};
        return;
    }
    try {
        std::thread([line = m_line] { runLine(line); }).detach();
    } catch (const std::system_error &error) {
        m_line->trouble = {ConnectionTrouble::Kind::SystemError, error.code().value(), {}};
        m_line->troubleNs = std::numeric_limits<qint64>::max(); // nothing will be found that is newer
    }
}

ModbusConnection::~ModbusConnection()
{
    {
        const std::lock_guard<std::mutex> lock(m_line->mutex);
        m_line->isEnding = true;
    }
    m_line->stop.give();
    m_line->wake.notify_all();
}

int ModbusConnection::addUnit(int unit, const SurveyedSpans &spans)
{
    const std::lock_guard<std::mutex> lock(m_line->mutex);
    const int use = ++m_line->lastUse;
    LineUnit &device = m_line->units[unit];
    device.uses.emplace(use, spans);
    device.usesVersion = use;
    m_line->wake.notify_all();
    return use;
}

void ModbusConnection::removeUnit(int unit, int use)
{
    const std::lock_guard<std::mutex> lock(m_line->mutex);
    const auto found = m_line->units.find(unit);
    if (found == m_line->units.end()) {
        return;
    }
    found->second.uses.erase(use);
    found->second.usesVersion = ++m_line->lastUse;
    if (found->second.uses.empty()) {
        m_line->units.erase(found);
    }
}

ModbusConnection::Outcome ModbusConnection::newest(int unit, const QVector<RegisterSpan> &spans, qint64 waitNs,
                                                   qint64 firstWaitNs, Answer *answer, qint64 *waitedNs, bool *wasFirst)
{
    const qint64 startNs = modbusNowNs();
    std::unique_lock<std::mutex> lock(m_line->mutex);
    LineUnit &device = m_line->units[unit];
    // The thread changes the content of groups and never the list: the reference holds while the mutex is given up.
    LineGroup &group = groupOf(device, spans, startNs);
    *wasFirst = group.lastAskedNs == 0;
    group.lastAskedNs = startNs;
    *waitedNs = 0;
    if (*wasFirst) {
        m_line->wake.notify_all();
    }
    const bool isExpectedSoon = device.lastRoundNs + device.roundDurationNs < startNs + waitNs;
    const qint64 limitNs = *wasFirst ? firstWaitNs : group.number > 0 && isExpectedSoon ? waitNs : 0;
    const auto isSettled = [&] { return group.number > group.lastGiven || isSilent(*m_line, device); };
    if (limitNs > 0 && !isSettled()) {
        m_line->news.wait_for(lock, std::chrono::nanoseconds(limitNs), isSettled);
        *waitedNs = modbusNowNs() - startNs;
    }
    const bool isKnown = group.number > 0 || !group.newest.spans.isEmpty();
    if (!isKnown) {
        *answer = device.lastAnswers(spans);
        const qint64 oldestNs = modbusNowNs() - surveyLimitMs * modbusNsPerMs;
        if (answer->timeNs > oldestNs) {
            group.newest = *answer; // the next one is that of a round
        }
    }
    if (isSilent(*m_line, device)) {
        return Outcome::Silent;
    }
    if (group.newest.spans.isEmpty()) {
        return Outcome::Awaited;
    }
    group.lastGiven = group.number;
    *answer = group.newest;
    return Outcome::Answered;
}

ModbusConnection::DeviceState ModbusConnection::state(int unit) const
{
    const std::lock_guard<std::mutex> lock(m_line->mutex);
    DeviceState state;
    state.isConnected = m_line->isConnected;
    state.trouble = m_line->trouble;
    state.troubleNs = m_line->troubleNs;
    const auto found = m_line->units.find(unit);
    if (found == m_line->units.end()) {
        return state;
    }
    const LineUnit &device = found->second;
    const qint64 nowNs = modbusNowNs();
    state.isKnownToAnswer = device.isKnownToAnswer;
    // What was found when somebody still read the device may have passed meanwhile. It is not forgotten: it sets the pace
    // at which the device is tried when it is asked again.
    if (state.trouble.kind == ConnectionTrouble::Kind::None && (device.isAsked(nowNs) || device.isSurveyed())) {
        state.trouble = device.trouble;
        state.troubleNs = device.troubleNs;
    }
    qint64 oldestNs = device.lastRoundNs;
    for (const LineGroup &group : device.groups) {
        if (group.isAsked(nowNs) && !group.newest.spans.isEmpty()) {
            oldestNs = oldestNs > 0 ? std::min(oldestNs, group.newest.timeNs) : group.newest.timeNs;
            for (const SpanAnswer &answer : group.newest.spans) {
                state.refusal = answer.exception != 0 ? answer.exception : state.refusal;
            }
        }
    }
    if (oldestNs == 0) {
        return state;
    }
    state.ageMs = (nowNs - oldestNs) / modbusNsPerMs;
    if (nowNs - device.lastRoundNs < rateExpiryNs) {
        const double countedNs = static_cast<double>(device.lastRoundNs - device.countedSinceNs);
        state.answersPerSecond = device.roundsPerSecond > 0 || countedNs <= 0
                                     ? device.roundsPerSecond
                                     : device.counted * nsPerSecond / countedNs;
    }
    return state;
}
