#pragma once

#include "modules/modbus/ConnectionSettings.h"
#include "modules/modbus/ModbusValue.h"
#include "modules/modbus/UnitSurvey.h"

#include "host/CommandHandlerInterface.h"

#include <memory>

class ModbusConnection;

/**
 * The command channel of a Modbus device.
 *
 * An exchange gives out the newest answer that the connection's thread has for its requests, all of one round. It waits
 * at most 5 ms for one that is newer than the last, and at most 50 ms when these requests were not exchanged within the
 * last second. All channels together wait for no longer than that without a pause. While the device is silent every
 * exchange ends at once without an answer. A request for a value that the device does not have is refused; an exchange
 * in which the device itself refuses a value counts as unanswered.
 *
 * Values that are read ahead have an answer at the first exchange. Where that is too old to be one, or where there is
 * none because the device is silent, the exchange is unanswered, and yet a reply that still belongs to another request
 * gets the last value that is known: callers show it whether they are answered or not.
 *
 * Owned by its module. GUI thread. Making and destroying it waits for nothing.
 */
class ModbusChannel : public CommandHandlerInterface
{
public:
    /// How the device is doing, for people.
    struct State
    {
        bool isConnected = false;     ///< the line is; on a serial line, the port is open
        QString trouble;              ///< what keeps the device from giving a value, one line; empty when nothing does
        bool isKnownToAnswer = false; ///< the device has answered what was read last, asked or ahead
        qint64 ageMs = -1;            ///< of the oldest value that is given out now; -1 before the first answer
        double answersPerSecond = 0;  ///< how often the device really answers, whatever is asked of this channel
    };

    static constexpr int waitMs = 5;
    static constexpr int firstWaitMs = 50;

    /// \param spans what is read ahead
    ModbusChannel(const ConnectionSettings &settings, ModbusLookup lookup, const SurveyedSpans &spans = {});
    ~ModbusChannel() override;

    void sendCommandCombos(QList<CommandCombo *> combos) override;

    State state() const;

protected:
    bool transact(const Command &request, Command &reply, const QDeadlineTimer &deadline) override;

private:
    /// Fills all replies and returns true; without an answer fills only those that hold values of other requests, and
    /// returns false. \a isWhole gets whether the device refused none of the values.
    bool fill(const QList<CommandCombo *> &combos, bool *isWhole);

    const int m_unit;
    const ModbusLookup m_lookup;
    const std::shared_ptr<ModbusConnection> m_connection;
    const int m_use; // number of this use of the device
};
