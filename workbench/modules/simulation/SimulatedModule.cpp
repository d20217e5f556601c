#include "modules/simulation/SimulatedModule.h"

#include "modules/simulation/ModuleKind.h"

#include "host/RegisterSet.h"

#include <limits>

namespace
{

/// The name is the last part of the key, as with real modules; so two of a kind have settings of their own.
QString nameFromKey(const QString &key)
{
    return key.section(QLatin1Char('/'), -1);
}

template<typename Reader> Parameter parameterFromRow(const ParameterRow<Reader> &row, int index, int bank)
{
    Parameter parameter;
    parameter.index = index;
    parameter.number = row.number;
    parameter.key = QString::fromUtf8(row.key);
    parameter.minimum = std::numeric_limits<qint32>::min();
    parameter.maximum = std::numeric_limits<qint32>::max();
    parameter.bank = static_cast<quint8>(bank);
    parameter.group = parameter.key.section(QStringLiteral("::"), 1, 1);
    parameter.name = QString::fromUtf8(row.name);
    parameter.unit = QString::fromUtf8(row.unit);
    parameter.nameSuffix = parameter.unit.isEmpty() ? QString() : QLatin1Char('[') + parameter.unit + QLatin1Char(']');
    parameter.access = QString::fromUtf8(row.access);
    return parameter;
}

quint32 lowBits(qint32 value, int width)
{
    return width >= 32 ? static_cast<quint32>(value) : static_cast<quint32>(value) & ((1u << width) - 1u);
}

qint32 packedFields(const std::vector<FieldRow> &fields, const SimulatedMachine &machine)
{
    quint32 packed = 0;
    for (const FieldRow &field : fields) {
        packed |= lowBits(field.read(machine), field.width) << field.bitOffset;
    }
    return static_cast<qint32>(packed);
}

} // namespace

SimulatedModule::SimulatedModule(const ModuleKind &kind, const QString &key, PluginHandler *handler,
                                 SimulationClock *clock, quint32 seed)
    : KAROModuleInterface(nameFromKey(key), key, handler, QStringLiteral(":/moreIconsII/XYPlot"))
    , m_alias(QString::fromUtf8(kind.alias) + QStringLiteral(" (") + key.section(QLatin1Char('/'), 0, 0) +
              QLatin1Char(')'))
    , m_address(static_cast<unsigned char>(kind.address))
    , m_channelNumber(kind.channel)
    , m_machine(clock, kind.axes, seed)
    , m_channel(clock, &m_machine, &m_values, m_address)
{
    addAxisParameters(kind);
    addGroups(kind);
    addRegisters(kind);
}

QString SimulatedModule::getAliasName() const
{
    return m_alias;
}

int SimulatedModule::numberOfAxes()
{
    return m_machine.axisCount();
}

unsigned char SimulatedModule::moduleAddress()
{
    return m_address;
}

CommandHandlerInterface *SimulatedModule::commandHandlerInterface()
{
    return &m_channel;
}

int SimulatedModule::getChannel()
{
    return m_channelNumber;
}

QMap<QString, Parameter> *SimulatedModule::getParameterMapByName(QString name)
{
    const auto found = m_parameterMaps.find(name);
    return found == m_parameterMaps.end() ? nullptr : &found.value();
}

QList<Register *> SimulatedModule::registers() const
{
    return m_registers;
}

void SimulatedModule::setMotion(int axis, const MotionProgram &program)
{
    m_machine.axis(axis).setProgram(program);
}

void SimulatedModule::setMoving(bool moving)
{
    m_machine.setMoving(moving);
}

void SimulatedModule::setSilent(bool silent)
{
    m_channel.setSilent(silent);
}

void SimulatedModule::setAnswerTime(int ms)
{
    m_channel.setAnswerTime(ms);
}

void SimulatedModule::addAxisParameters(const ModuleKind &kind)
{
    for (int motor = 0; motor < m_machine.axisCount(); ++motor) {
        QMap<QString, Parameter> &map = m_parameterMaps[QStringLiteral("axis%1").arg(motor)];
        const SimulatedAxis *const axis = &m_machine.axis(motor);
        for (const AxisParameterRow &row : kind.axisParameters) {
            map.insert(QString::fromUtf8(row.key), parameterFromRow(row, map.size(), motor));
            if (const AxisReader read = row.read) {
                m_values.add(ReadCommand::AxisParameter, motor, row.number, [axis, read]() { return read(*axis); });
            }
        }
    }
}

void SimulatedModule::addGroups(const ModuleKind &kind)
{
    for (const MachineParameterGroup &group : kind.groups) {
        QMap<QString, Parameter> &map = m_parameterMaps[QString::fromUtf8(group.mapName)];
        for (const MachineParameterRow &row : group.rows) {
            map.insert(QString::fromUtf8(row.key), parameterFromRow(row, map.size(), group.motorBank));
            if (row.read) {
                m_values.add(group.command, group.motorBank, row.number,
                             [this, read = row.read]() { return read(m_machine); });
            }
        }
    }
}

void SimulatedModule::addRegisters(const ModuleKind &kind)
{
    for (const RegisterRow &row : kind.registers) {
        const QString title = QString::fromUtf8(row.title);
        const QString text = QString::fromUtf8(row.description);
        if (row.fields.empty()) {
            m_registers.append(new Register(row.address, row.width, title, text, row.kind, this));
        } else {
            auto *const set = new RegisterSet(row.address, row.width, title, text, row.kind, this);
            for (const FieldRow &field : row.fields) {
                set->addFraction(field.bitOffset, field.width, QString::fromUtf8(field.title),
                                 QString::fromUtf8(field.description));
            }
            m_registers.append(set);
        }
        addRegisterValue(row);
    }
}

void SimulatedModule::addRegisterValue(const RegisterRow &row)
{
    constexpr int anyMotorBank = 0; // requests for registers carry 0
    const int command = m_channelNumber == 1 ? ReadCommand::RegisterOfChannel1 : ReadCommand::Register;
    if (!row.fields.empty()) {
        m_values.add(command, anyMotorBank, row.address,
                     [this, fields = row.fields]() { return packedFields(fields, m_machine); });
    } else if (row.read) {
        m_values.add(command, anyMotorBank, row.address, [this, read = row.read, width = row.width]() {
            return static_cast<qint32>(lowBits(read(m_machine), width));
        });
    }
}
