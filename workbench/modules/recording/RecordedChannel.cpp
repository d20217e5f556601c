#include "modules/recording/RecordedChannel.h"

#include <utility>

RecordedChannel::RecordedChannel(Source source) : m_source(std::move(source)) {}

void RecordedChannel::sendCommandCombos(QList<CommandCombo *> combos)
{
    combos.removeAll(nullptr);
    if (!combos.isEmpty() && m_turns.beginsNextRow(combos.constFirst())) {
        m_source.goOn();
    }
    QList<CommandCombo *> passed;
    for (CommandCombo *const combo : qAsConst(combos)) {
        if (m_source.translate(combo->request).has_value()) {
            passed.append(combo);
        }
    }
    for (const CommandCombo *const combo : qAsConst(passed)) {
        combos.removeOne(const_cast<CommandCombo *>(combo));
    }
    if (!combos.isEmpty() || passed.isEmpty()) {
        CommandHandlerInterface::sendCommandCombos(combos);
    }
    if (!passed.isEmpty()) {
        pass(passed);
    }
}

bool RecordedChannel::transact(const Command &request, Command &reply, const QDeadlineTimer &deadline)
{
    Q_UNUSED(deadline) // all is at hand
    if (const std::optional<qint32> value = m_source.read(request)) {
        reply.setValue(*value);
    } else {
        reply.setStatus(Command::Status::Refused);
    }
    return true;
}

qint64 RecordedChannel::nowNs() const
{
    return 0;
}

void RecordedChannel::pass(const QList<CommandCombo *> &combos)
{
    CommandHandlerInterface *const channel = m_source.beside();
    if (channel == nullptr) {
        return; // taken out; the replies stay as they are
    }
    constexpr std::size_t maximumKnown = 256; // callers come and go
    if (m_passed.size() > maximumKnown) {
        m_passed.clear();
    }
    QList<CommandCombo *> translated;
    for (const CommandCombo *const combo : combos) {
        CommandCombo &pair = m_passed[combo];
        pair.request = m_source.translate(combo->request).value_or(combo->request);
        translated.append(&pair);
    }
    channel->sendCommandCombos(translated);
    for (int index = 0; index < combos.size(); ++index) {
        const Command &request = combos.at(index)->request;
        Command reply = translated.at(index)->reply;
        reply.setAddress(request.address());
        reply.setCommand(request.command());
        reply.setType(request.type());
        reply.setMotorBank(request.motorBank());
        combos.at(index)->reply = reply;
    }
}
