#pragma once

#include "ScriptedModule.h"

#include <functional>
#include <memory>

/**
 * The command channel of a StormModule. Outlives its module on purpose: an exchange on the channel of a module that is
 * gone is counted, and is no use of freed memory of the storm's own.
 */
class StormChannel : public CommandHandlerInterface
{
public:
    enum class Manner
    {
        Answers,
        Silent,  ///< waits until the deadline when answerMs is not 0, else gives up at once
        Babbling ///< every reply bears another address, command and type, and any value
    };

    void sendCommandCombos(QList<CommandCombo *> combos) override;

    std::function<void()> onExchange;    ///< called once, in the middle of the next exchange
    std::function<void()> everyExchange; ///< called in the middle of each one
    std::function<qint32(const Command &)> answer;
    Manner manner = Manner::Answers;
    int answerMs = 0; ///< ms that one answer takes in real time
    qint64 exchanges = 0;
    bool isDead = false; ///< its module has been destroyed

    static qint64 allExchanges();         ///< of all channels
    static qint64 exchangesWithTheDead(); ///< those with modules that had been destroyed
    /// Moves the clock of all channels on; they do not see the real one until \a ms is negative.
    static void advance(int ms);

protected:
    bool transact(const Command &request, Command &reply, const QDeadlineTimer &deadline) override;
    qint64 nowNs() const override;

private:
    quint32 m_noise = 1;
};

/// A module with up to three axes, odd names, registers and every kind of group.
class StormModule : public ScriptedModule
{
    Q_OBJECT

public:
    /// \param shape fixes the axes (0 to 3), names and registers
    StormModule(const QString &key, quint32 shape);
    ~StormModule() override;

    QString getAliasName() const override;
    CommandHandlerInterface *commandHandlerInterface() override;

    StormChannel *const channel; ///< never null, never freed

private:
    const quint32 m_shape;
};
