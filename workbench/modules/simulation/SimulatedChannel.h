#pragma once

#include "host/CommandHandlerInterface.h"

class SimulatedMachine;
class SimulationClock;
class ValueTable;

/**
 * The command channel of a simulated module: time goes on with each exchange, then every request is answered from the
 * module's table of values.
 *
 * Owned by its module. GUI thread.
 */
class SimulatedChannel : public CommandHandlerInterface
{
public:
    /// The pointers are not owned and have to outlive the channel.
    SimulatedChannel(SimulationClock *clock, SimulatedMachine *machine, const ValueTable *values,
                     unsigned char moduleAddress);

    void sendCommandCombos(QList<CommandCombo *> combos) override;

    void setSilent(bool silent); ///< A silent channel answers nothing.

    /// Real time that each answer takes, ms; 0, as at the start, for at once. It blocks, as a real channel does.
    void setAnswerTime(int ms);

protected:
    bool transact(const Command &request, Command &reply, const QDeadlineTimer &deadline) override;

    /// Driven by exchanges, simulated time and the time that answers took: a stall of the machine makes no answer late,
    /// so that what is read does not depend on it.
    qint64 nowNs() const override;

private:
    SimulationClock *const m_clock;
    SimulatedMachine *const m_machine;
    const ValueTable *const m_values;
    const unsigned char m_moduleAddress;
    bool m_silent = false;
    int m_answerTimeMs = 0;
    qint64 m_waitedMs = 0; // for answers, since the start
};
