#pragma once

#include "host/CommandHandlerInterface.h"
#include "host/KAROModuleInterface.h"

#include <QMap>
#include <QVector>

#include <functional>

/// A command channel that answers by a function and stores the requests.
class ScriptedChannel : public CommandHandlerInterface
{
public:
    void sendCommandCombos(QList<CommandCombo *> combos) override
    {
        QVector<Command> requests;
        for (const CommandCombo *const combo : qAsConst(combos)) {
            requests.append(combo->request);
        }
        exchanges.append(requests);
        CommandHandlerInterface::sendCommandCombos(combos);
        const auto last = onExchange; // may destroy this channel
        last();
    }

    std::function<qint32(const Command &)> answer = [](const Command &) { return 0; };
    std::function<void()> onExchange = [] {}; ///< called in the middle of every exchange
    QVector<QVector<Command>> exchanges;      ///< the requests of each exchange
    bool isSilent = false;
    std::function<qint64()> clock; ///< ns; the real one while it is empty

protected:
    bool transact(const Command &request, Command &reply, const QDeadlineTimer &deadline) override
    {
        Q_UNUSED(deadline)
        reply.setValue(answer(request));
        return !isSilent;
    }

    qint64 nowNs() const override
    {
        return clock ? clock() : CommandHandlerInterface::nowNs();
    }
};

/// A module whose answers are set by the test.
class ScriptedModule : public KAROModuleInterface
{
    Q_OBJECT

public:
    explicit ScriptedModule(const QString &key, int axes = 1, unsigned char address = 1,
                            const QString &name = QStringLiteral("Scripted"))
        : KAROModuleInterface(name, key, nullptr, QString()), m_axes(axes), m_address(address)
    {
    }

    QString getAliasName() const override
    {
        return QStringLiteral("alias of ") + key();
    }

    int numberOfAxes() override
    {
        return m_axes;
    }

    unsigned char moduleAddress() override
    {
        return m_address;
    }

    CommandHandlerInterface *commandHandlerInterface() override
    {
        return &channel;
    }

    int getChannel() override
    {
        return channelNumber;
    }

    QMap<QString, Parameter> *getParameterMapByName(QString name) override
    {
        return m_groups.contains(name) ? &m_groups[name] : nullptr;
    }

    QList<Register *> registers() const override
    {
        return registerList;
    }

    /// Adds a parameter to the map \a group under \a key.
    void addParameter(const QString &group, const QString &key, int number, const QString &name,
                      const QString &access = QStringLiteral("rw"))
    {
        Parameter &parameter = m_groups[group][key];
        parameter.number = number;
        parameter.name = name;
        parameter.nameSuffix = QStringLiteral("[raw]");
        parameter.access = access;
    }

    ScriptedChannel channel;
    int channelNumber = 0;
    QList<Register *> registerList; ///< children of this module

private:
    const int m_axes;
    const unsigned char m_address;
    QMap<QString, QMap<QString, Parameter>> m_groups;
};
