#include "ScriptedModule.h"

void ScriptedChannel::sendCommandCombos(QList<CommandCombo *> combos)
{
    QVector<Command> requests;
    for (const CommandCombo *const combo : qAsConst(combos)) {
        requests.append(combo->request);
    }
    exchanges.append(requests);
    if (journal != nullptr) {
        journal->append(QStringLiteral("%1 x %2").arg(name).arg(requests.size()));
    }
    CommandHandlerInterface::sendCommandCombos(combos);
    if (onExchange) {
        onExchange();
    }
}

bool ScriptedChannel::transact(const Command &request, Command &reply, const QDeadlineTimer &deadline)
{
    Q_UNUSED(deadline)
    reply.setValue(answer(request));
    return true;
}

ScriptedModule::ScriptedModule(const QString &key, int axes, unsigned char address)
    : KAROModuleInterface(QStringLiteral("Scripted"), key, nullptr, QString()), m_axes(axes), m_address(address)
{
    channel.name = key;
}

ScriptedModule::~ScriptedModule() = default;

QString ScriptedModule::getAliasName() const
{
    return QStringLiteral("alias of ") + key();
}

int ScriptedModule::numberOfAxes()
{
    return m_axes;
}

unsigned char ScriptedModule::moduleAddress()
{
    return m_address;
}

CommandHandlerInterface *ScriptedModule::commandHandlerInterface()
{
    return &channel;
}

int ScriptedModule::getChannel()
{
    return channelNumber;
}

QMap<QString, Parameter> *ScriptedModule::getParameterMapByName(QString name)
{
    const auto group = m_groups.find(name);
    return group == m_groups.end() ? nullptr : &group.value();
}

QList<Register *> ScriptedModule::registers() const
{
    return registerList;
}

void ScriptedModule::addParameter(const QString &group, const QString &key, int number, const QString &name,
                                  const QString &access)
{
    Parameter parameter;
    parameter.number = number;
    parameter.name = name;
    parameter.nameSuffix = QStringLiteral("[raw]");
    parameter.access = access;
    m_groups[group].insert(key, parameter);
}
