#pragma once

#include "host/CommandHandlerInterface.h"
#include "host/KAROModuleInterface.h"

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

    /// Exchanges with modules that had been destroyed, of all channels.
    static qint64 exchangesWithTheDead();
    /// Moves the clock of all channels on; they do not see the real one until \a ms is negative.
    static void advance(int ms);

protected:
    bool transact(const Command &request, Command &reply, const QDeadlineTimer &deadline) override;
    qint64 nowNs() const override;

private:
    quint32 m_noise = 1;
};

/// A module with up to three axes, odd names, registers and every kind of group.
class StormModule : public KAROModuleInterface
{
    Q_OBJECT

public:
    /// \param shape fixes the axes (0 to 3), names and registers
    StormModule(const QString &key, quint32 shape);
    ~StormModule() override;

    QString getAliasName() const override;
    int numberOfAxes() override;
    unsigned char moduleAddress() override;
    CommandHandlerInterface *commandHandlerInterface() override;
    int getChannel() override;
    QMap<QString, Parameter> *getParameterMapByName(QString name) override;
    QList<Register *> registers() const override;

    StormChannel *const channel; ///< never null, never freed

private:
    void addParameter(const QString &group, int number, const QString &name);

    const quint32 m_shape;
    QMap<QString, QMap<QString, Parameter>> m_groups;
    QList<Register *> m_registers; // children
};
