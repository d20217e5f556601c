#pragma once

#include "host/CommandHandlerInterface.h"

#include <vector>

/// The request for one value of a module.
inline Command requestFor(int address, int command, int motorBank, int type)
{
    Command request;
    request.setAddress(static_cast<unsigned char>(address));
    request.setCommand(static_cast<unsigned char>(command));
    request.setMotorBank(static_cast<unsigned char>(motorBank));
    request.setType(static_cast<unsigned short>(type));
    return request;
}

/// Requests that are sent together; the replies stay from one time to the next.
class Exchange
{
public:
    explicit Exchange(const QVector<Command> &requests) : combos(static_cast<size_t>(requests.size()))
    {
        for (size_t i = 0; i < combos.size(); ++i) {
            combos[i].request = requests.at(static_cast<int>(i));
            list.append(&combos[i]);
        }
    }
    Q_DISABLE_COPY(Exchange)

    /// Returns whether the first request was answered just now.
    bool with(CommandHandlerInterface *channel)
    {
        channel->sendCommandCombos(list);
        return !list.isEmpty() && reply(0).status() == Command::Status::Answered;
    }

    const Command &reply(int index) const
    {
        return list.at(index)->reply;
    }

    std::vector<CommandCombo> combos;
    QList<CommandCombo *> list;
};
