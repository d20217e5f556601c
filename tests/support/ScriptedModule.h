#pragma once

#include "host/CommandHandlerInterface.h"
#include "host/KAROModuleInterface.h"

#include <QMap>
#include <QVector>

#include <functional>

/// A command channel that answers by a function and keeps what it was asked.
class ScriptedChannel : public CommandHandlerInterface
{
public:
    void sendCommandCombos(QList<CommandCombo *> combos) override;

    std::function<qint32(const Command &)> answer = [](const Command &) { return 0; };
    std::function<void()> onExchange;    ///< called in the middle of every exchange
    QVector<QVector<Command>> exchanges; ///< the requests of each exchange
    QStringList *journal = nullptr;      ///< gets a line per exchange when set
    QString name;

protected:
    bool transact(const Command &request, Command &reply, const QDeadlineTimer &deadline) override;
};

/// A module whose every answer is written by the test.
class ScriptedModule : public KAROModuleInterface
{
    Q_OBJECT

public:
    explicit ScriptedModule(const QString &key, int axes = 1, unsigned char address = 1);
    ~ScriptedModule() override;

    QString getAliasName() const override;
    int numberOfAxes() override;
    unsigned char moduleAddress() override;
    CommandHandlerInterface *commandHandlerInterface() override;
    int getChannel() override;
    QMap<QString, Parameter> *getParameterMapByName(QString name) override;
    QList<Register *> registers() const override;

    /// Adds a parameter to the map \a group under \a key.
    void addParameter(const QString &group, const QString &key, int number, const QString &name,
                      const QString &access = QStringLiteral("rw"));

    ScriptedChannel channel;
    int channelNumber = 0;
    QList<Register *> registerList; ///< children of this module

private:
    const int m_axes;
    const unsigned char m_address;
    QMap<QString, QMap<QString, Parameter>> m_groups;
};
