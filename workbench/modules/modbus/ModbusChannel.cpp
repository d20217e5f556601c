#include "modules/modbus/ModbusChannel.h"

#include "modules/modbus/ModbusClock.h"
#include "modules/modbus/ModbusConnection.h"
#include "modules/modbus/WaitBudget.h"

#include <algorithm>
#include <optional>

namespace
{

/// All channels share the GUI thread, so they share what it may wait.
WaitBudget &usualBudget()
{
    static WaitBudget budget(8, 30);
    return budget;
}

WaitBudget &firstBudget()
{
    static WaitBudget budget(ModbusChannel::firstWaitMs, 10);
    return budget;
}

void setRequest(Command &reply, const Command &request)
{
    reply.setAddress(request.address());
    reply.setCommand(request.command());
    reply.setType(request.type());
    reply.setMotorBank(request.motorBank());
}

bool isReplyTo(const Command &reply, const Command &request)
{
    return reply.address() == request.address() && reply.command() == request.command() &&
           reply.type() == request.type() && reply.motorBank() == request.motorBank();
}

bool isValue(const std::optional<ModbusValue> &value, const ModbusConnection::SpanAnswer &answer)
{
    return value && answer.exception == 0 && answer.words.size() == value->span.count;
}

void fillReply(CommandCombo *combo, const std::optional<ModbusValue> &value, const ModbusConnection::SpanAnswer &answer)
{
    Command &reply = combo->reply;
    setRequest(reply, combo->request);
    if (isValue(value, answer)) {
        reply.setValue(value->decode(answer.words.constData()));
    } else {
        reply.setStatus(Command::Status::Refused);
    }
}

/// Callers show a reply even when the exchange is unanswered. So a reply that still holds the value of another request
/// gets the last value that is known for this one.
void fillOldValue(CommandCombo *combo, const std::optional<ModbusValue> &value,
                  const ModbusConnection::SpanAnswer &answer)
{
    if (isValue(value, answer) && !isReplyTo(combo->reply, combo->request)) {
        setRequest(combo->reply, combo->request);
        combo->reply.setValue(value->decode(answer.words.constData()));
    }
}

} // namespace

ModbusChannel::ModbusChannel(const ConnectionSettings &settings, ModbusLookup lookup, const SurveyedSpans &spans)
    : m_unit(settings.unit)
    , m_lookup(std::move(lookup))
    , m_connection(ModbusConnection::of(settings))
    , m_use(m_connection->addUnit(m_unit, spans))
{
}

ModbusChannel::~ModbusChannel()
{
    m_connection->removeUnit(m_unit, m_use);
}

void ModbusChannel::sendCommandCombos(QList<CommandCombo *> combos)
{
    combos.removeAll(nullptr);
    const qint64 startNs = modbusNowNs();
    bool isWhole = true;
    const bool isAnswered = fill(combos, &isWhole);
    if (!isAnswered) {
        for (CommandCombo *const combo : qAsConst(combos)) {
            combo->reply.setStatus(Command::Status::Unanswered);
        }
    }
    // A value that the device refuses is an old one to those who show it.
    countExchange(combos.size(), isAnswered && isWhole, modbusNowNs() - startNs);
}

bool ModbusChannel::fill(const QList<CommandCombo *> &combos, bool *isWhole)
{
    QVector<std::optional<ModbusValue>> values;
    QVector<RegisterSpan> spans;
    for (const CommandCombo *const combo : combos) {
        std::optional<ModbusValue> value = m_lookup(combo->request);
        if (value && !value->span.isReadable()) {
            value.reset();
        }
        if (value) {
            spans.append(value->span);
        }
        values.append(value);
    }
    ModbusConnection::Answer answer;
    bool isAnswered = true;
    if (!spans.isEmpty()) {
        const qint64 nowNs = modbusNowNs();
        qint64 waitedNs = 0;
        bool wasFirst = false;
        const auto outcome = m_connection->newest(m_unit, spans, usualBudget().grantedNs(waitMs * modbusNsPerMs, nowNs),
                                                  firstBudget().grantedNs(firstWaitMs * modbusNsPerMs, nowNs), &answer,
                                                  &waitedNs, &wasFirst);
        (wasFirst ? firstBudget() : usualBudget()).spend(waitedNs);
        // Before the first answer it is not known whether the device is silent.
        if (outcome != ModbusConnection::Outcome::Awaited) {
            setSilenced(outcome == ModbusConnection::Outcome::Silent);
        }
        isAnswered = outcome == ModbusConnection::Outcome::Answered;
    }
    int span = 0;
    for (int index = 0; index < combos.size(); ++index) {
        const bool isKnown = values.at(index).has_value();
        const auto fill = isAnswered ? fillReply : fillOldValue;
        fill(combos.at(index), values.at(index), isKnown ? answer.spans.value(span) : ModbusConnection::SpanAnswer());
        span += isKnown ? 1 : 0;
    }
    *isWhole = std::none_of(answer.spans.cbegin(), answer.spans.cend(),
                            [](const ModbusConnection::SpanAnswer &each) { return each.exception != 0; });
    return isAnswered;
}

bool ModbusChannel::transact(const Command &request, Command &reply, const QDeadlineTimer &deadline)
{
    Q_UNUSED(request)
    Q_UNUSED(reply)
    Q_UNUSED(deadline)
    return false; // an exchange is answered as a whole
}

ModbusChannel::State ModbusChannel::state() const
{
    const ModbusConnection::DeviceState state = m_connection->state(m_unit);
    const bool isRefusing = state.refusal != 0 && state.trouble.kind == ConnectionTrouble::Kind::None;
    const ConnectionTrouble refusal{ConnectionTrouble::Kind::Exception, state.refusal, {}};
    return {state.isConnected, (isRefusing ? refusal : state.trouble).words(), state.isKnownToAnswer, state.ageMs,
            state.answersPerSecond};
}
