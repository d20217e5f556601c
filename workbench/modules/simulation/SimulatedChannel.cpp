#include "modules/simulation/SimulatedChannel.h"

#include "modules/simulation/SimulatedMachine.h"
#include "modules/simulation/SimulationClock.h"
#include "modules/simulation/ValueTable.h"

#include <QDeadlineTimer>
#include <QThread>

SimulatedChannel::SimulatedChannel(SimulationClock *clock, SimulatedMachine *machine, const ValueTable *values,
                                   unsigned char moduleAddress)
    : m_clock(clock), m_machine(machine), m_values(values), m_moduleAddress(moduleAddress)
{
}

void SimulatedChannel::sendCommandCombos(QList<CommandCombo *> combos)
{
    m_clock->beginExchange();
    m_machine->countExchange();
    CommandHandlerInterface::sendCommandCombos(combos);
}

void SimulatedChannel::setSilent(bool silent)
{
    m_silent = silent;
}

void SimulatedChannel::setAnswerTime(int ms)
{
    m_answerTimeMs = qMax(0, ms);
}

bool SimulatedChannel::transact(const Command &request, Command &reply, const QDeadlineTimer &deadline)
{
    // Waiting for an answer that will never come would only freeze the workbench.
    if (m_silent) {
        return false;
    }
    if (m_answerTimeMs > 0) {
        const qint64 remainingMs = deadline.remainingTime();
        QThread::msleep(static_cast<unsigned long>(qMin<qint64>(m_answerTimeMs, remainingMs)));
        if (remainingMs < m_answerTimeMs) {
            return false;
        }
    }
    const std::optional<qint32> value =
        request.address() == m_moduleAddress ? m_values->read(request) : std::optional<qint32>();
    reply.setAddress(request.address());
    reply.setCommand(request.command());
    reply.setType(request.type());
    reply.setMotorBank(request.motorBank());
    if (value.has_value()) {
        reply.setValue(*value);
    } else {
        reply.setStatus(Command::Status::Refused);
    }
    return true;
}
