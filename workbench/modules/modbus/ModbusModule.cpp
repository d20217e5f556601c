#include "modules/modbus/ModbusModule.h"

#include "modules/modbus/RegisterMapRows.h"

#include "host/RegisterSet.h"

#include <limits>

namespace
{

constexpr int registerChannel = 0; // registers are read by the usual command

/// The name is the last part of the key, so two devices of one kind have settings of their own.
QString nameFromKey(const QString &key)
{
    return key.section(QLatin1Char('/'), -1);
}

SurveyedSpans surveyedSpans(const RegisterMap &map)
{
    SurveyedSpans spans;
    for (const RegisterMap::Value &value : map.values) {
        (value.isReadAhead ? spans.ahead : spans.apart).append(value.span);
    }
    return spans;
}

} // namespace

ModbusModule::ModbusModule(const QString &key, PluginHandler *handler, const ConnectionSettings &connection,
                           const RegisterMap &map)
    : ModbusModule(key, handler, connection, map, registerMapRows(map))
{
}

ModbusModule::ModbusModule(const QString &key, PluginHandler *handler, const ConnectionSettings &connection,
                           const RegisterMap &map, const QVector<RegisterMapRow> &rows)
    : KAROModuleInterface(nameFromKey(key), key, handler, QStringLiteral(":/moreIconsII/XYPlot"))
    // A semicolon would shift the header of logs against their lines.
    , m_alias(QStringLiteral("%1 (%2)")
                  .arg(map.title, key.section(QLatin1Char('/'), 0, 0))
                  .replace(QLatin1Char(';'), QLatin1Char('_')))
    , m_axes(map.axisCount())
    , m_address(static_cast<unsigned char>(connection.unit))
    , m_channel(connection, lookupIn(rows, m_address), surveyedSpans(map))
{
    for (const RegisterMapRow &row : rows) {
        if (row.group == RegisterMap::Group::Register) {
            addRegister(row);
        } else {
            addParameter(row);
        }
    }
}

QString ModbusModule::getAliasName() const
{
    return m_alias;
}

int ModbusModule::numberOfAxes()
{
    return m_axes;
}

unsigned char ModbusModule::moduleAddress()
{
    return m_address;
}

CommandHandlerInterface *ModbusModule::commandHandlerInterface()
{
    return &m_channel;
}

int ModbusModule::getChannel()
{
    return registerChannel;
}

QMap<QString, Parameter> *ModbusModule::getParameterMapByName(QString name)
{
    const auto found = m_parameterMaps.find(name);
    return found == m_parameterMaps.end() ? nullptr : &found.value();
}

QList<Register *> ModbusModule::registers() const
{
    return m_registers;
}

ModbusChannel::State ModbusModule::state() const
{
    return m_channel.state();
}

void ModbusModule::addParameter(const RegisterMapRow &row)
{
    QMap<QString, Parameter> &map = m_parameterMaps[row.mapName];
    Parameter parameter;
    parameter.index = map.size();
    parameter.number = row.number;
    // Containers list some groups in the order of the keys.
    constexpr int digits = 3;
    parameter.key = QStringLiteral("par::%1::%2").arg(row.number, digits, 10, QLatin1Char('0')).arg(row.name);
    parameter.minimum = std::numeric_limits<qint32>::min();
    parameter.maximum = std::numeric_limits<qint32>::max();
    parameter.bank = static_cast<quint8>(row.motorBank);
    parameter.name = row.name;
    parameter.unit = row.unitText;
    parameter.nameSuffix = row.unitText.isEmpty() ? QString() : QLatin1Char('[') + row.unitText + QLatin1Char(']');
    parameter.access = QStringLiteral("r");
    parameter.description = row.description;
    map.insert(parameter.key, parameter);
}

void ModbusModule::addRegister(const RegisterMapRow &row)
{
    if (row.fractions.isEmpty()) {
        m_registers.append(
            new Register(row.number, row.widthBits, row.shownName(), row.description, Register::Readable, this));
        return;
    }
    auto *const set = new RegisterSet(row.number, row.widthBits, row.name, row.description, Register::Readable, this);
    for (const RegisterMapRow::Fraction &fraction : row.fractions) {
        set->addFraction(fraction.bitOffset, fraction.width, fraction.name, fraction.description);
    }
    m_registers.append(set);
}
