#pragma once

#include "modules/recording/SamplingTurns.h"

#include "host/CommandHandlerInterface.h"

#include <functional>
#include <optional>
#include <unordered_map>

/**
 * The command channel of a recorded module: answers from the present row, and passes on what belongs to the module
 * beside it.
 *
 * Owned by its module. GUI thread.
 */
class RecordedChannel : public CommandHandlerInterface
{
public:
    /// What the channel needs of its module.
    struct Source
    {
        std::function<void()> goOn; ///< called before the first exchange of each time that is sampled
        /// The value that a request asks for; nothing when the recording has none.
        std::function<std::optional<qint32>(const Command &)> read;
        /// The request to the module beside that belongs to a request; nothing when that has none.
        std::function<std::optional<Command>(const Command &)> translate;
        std::function<CommandHandlerInterface *()> beside; ///< the channel of that module, null without one
    };

    explicit RecordedChannel(Source source);

    void sendCommandCombos(QList<CommandCombo *> combos) override;

protected:
    bool transact(const Command &request, Command &reply, const QDeadlineTimer &deadline) override;

    /// Always the same time, so that an answer takes none: a channel that counts as slow rests, and would miss rows.
    qint64 nowNs() const override;

private:
    void pass(const QList<CommandCombo *> &combos);

    const Source m_source;
    SamplingTurns m_turns;
    // By the caller's pair, so that the channel beside gets the same pair for each caller every time.
    std::unordered_map<const CommandCombo *, CommandCombo> m_passed;
};
