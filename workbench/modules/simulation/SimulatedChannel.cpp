#include "modules/simulation/SimulatedChannel.h"

#include "modules/simulation/SimulatedMachine.h"
#include "modules/simulation/SimulationClock.h"
#include "modules/simulation/ValueTable.h"

SimulatedChannel::SimulatedChannel(SimulationClock *clock, SimulatedMachine *machine, const ValueTable *values,
                                   unsigned char moduleAddress)
    : m_clock(clock), m_machine(machine), m_values(values), m_moduleAddress(moduleAddress)
{
}

void SimulatedChannel::sendCommandCombos(QList<CommandCombo *> combos)
{
    m_clock->exchangeBegins();
    m_machine->countExchange();
    CommandHandlerInterface::sendCommandCombos(combos);
}

void SimulatedChannel::setSilent(bool silent)
{
    m_silent = silent;
}

bool SimulatedChannel::isSilent() const
{
    return m_silent;
}

bool SimulatedChannel::transact(const Command &request, Command &reply, const QDeadlineTimer &deadline)
{
    // The answer to every request is known at once, and waiting for one that will not come would only freeze the
    // workbench.
    Q_UNUSED(deadline)
    if (m_silent) {
        return false;
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
