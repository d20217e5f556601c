#include "modules/modbus/RegisterMapRows.h"

#include "host/Command.h"
#include "host/ParameterType.h"

#include <QCoreApplication>
#include <QHash>
#include <QSet>

#include <algorithm>

namespace
{

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(RegisterMapRows)
};

constexpr int axisCommand = 6;
constexpr int globalCommand = 10;
constexpr int inputOutputCommand = 15;
constexpr int registerCommand = 148;
constexpr int variableBank = 2;

// Containers take a register with more fields, and a narrower field, for flags that are not to be plotted.
constexpr int maximumFractions = 4;
constexpr int minimumFractionBits = 4;

constexpr int lowByteMask = 0xFF;

using Group = RegisterMap::Group;

/// Where the rows of a group are listed, and how they are asked for.
void setPlace(RegisterMapRow &row, const RegisterMap::Value &value)
{
    row.group = value.group;
    row.command = inputOutputCommand;
    switch (value.group) {
    case Group::Axis:
        row.mapName = QStringLiteral("axis%1").arg(value.axis);
        row.command = axisCommand;
        row.motorBank = value.axis;
        break;
    case Group::Variable:
        row.mapName = QStringLiteral("global%1").arg(variableBank);
        row.command = globalCommand;
        row.motorBank = variableBank;
        break;
    case Group::DigitalInput:
        row.mapName = QString::fromLatin1(ParameterType::DigitalInput);
        row.motorBank = 0;
        break;
    case Group::AnalogInput:
        row.mapName = QString::fromLatin1(ParameterType::AnalogInput);
        row.motorBank = 1;
        break;
    case Group::DigitalOutput:
        row.mapName = QString::fromLatin1(ParameterType::DigitalOutput);
        row.motorBank = 2;
        break;
    case Group::Register:
        row.command = registerCommand;
        break;
    }
}

QString tableText(ModbusTable table)
{
    switch (table) {
    case ModbusTable::Coil:
        return Text::tr("Coil");
    case ModbusTable::DiscreteInput:
        return Text::tr("Discrete input");
    case ModbusTable::InputRegister:
        return Text::tr("Input register");
    case ModbusTable::HoldingRegister:
        break;
    }
    return Text::tr("Holding register");
}

/// Where the value stands, behind what the map says about it.
QString describe(const QString &description, const RegisterSpan &span)
{
    constexpr int hexDigits = 4;
    constexpr int hexBase = 16;
    const QString place =
        tableText(span.table) + QStringLiteral(" 0x%1").arg(int(span.address), hexDigits, hexBase, QLatin1Char('0'));
    return description.isEmpty() ? place : description + QStringLiteral(" (") + place + QLatin1Char(')');
}

RegisterMapRow rowOf(const RegisterMap::Value &value, int valueIndex)
{
    RegisterMapRow row;
    row.valueIndex = valueIndex;
    setPlace(row, value);
    row.name = value.name;
    row.unitText = stepText(value.unit, value.format.resolution);
    row.description = describe(value.description, value.span);
    row.value.span = value.span;
    row.value.decode = [format = value.format](const quint16 *words) { return format.value(words); };
    // A signed value keeps its sign in all 32 bit, whatever the container is set to.
    if (value.format.type == NumberFormat::Type::UInt16 && value.format.isPlain()) {
        row.widthBits = value.format.bits();
    }
    return row;
}

RegisterMapRow rowOf(const RegisterMap::Value &value, const RegisterMap::Field &field, int valueIndex)
{
    RegisterMapRow row;
    row.valueIndex = valueIndex;
    setPlace(row, value);
    row.name = value.name + QStringLiteral(": ") + field.name;
    row.unitText = field.unit;
    row.description = describe(field.description, value.span);
    row.value.span = value.span;
    row.value.decode = [format = value.format, field](const quint16 *words) {
        return bitField(format.rawBits(words), field.lowestBit, field.width, field.isSigned);
    };
    return row;
}

bool areFractions(const RegisterMap::Value &value)
{
    return value.group == Group::Register && value.fields.size() <= maximumFractions &&
           std::all_of(value.fields.cbegin(), value.fields.cend(), [](const RegisterMap::Field &field) {
               return field.width >= minimumFractionBits && !field.isSigned;
           });
}

QString fractionText(const RegisterMap::Field &field)
{
    return field.unit.isEmpty() ? field.name : QStringLiteral("%1 [%2]").arg(field.name, field.unit);
}

void setNumbers(QVector<RegisterMapRow> &rows)
{
    QHash<QString, int> next;
    QSet<int> usedAddresses;
    for (RegisterMapRow &row : rows) {
        if (row.group != Group::Register) {
            row.number = next[row.mapName]++;
            continue;
        }
        row.number = int(row.value.span.address) & lowByteMask;
        for (int free = 0; usedAddresses.contains(row.number); ++free) {
            row.number = free;
        }
        usedAddresses.insert(row.number);
    }
}

quint32 keyOf(int command, int motorBank, int number)
{
    return (quint32(command) << 16U) | (quint32(motorBank) << 8U) | quint32(number);
}

} // namespace

QString RegisterMapRow::shownName() const
{
    return unitText.isEmpty() ? name : QStringLiteral("%1 [%2]").arg(name, unitText);
}

QVector<RegisterMapRow> registerMapRows(const RegisterMap &map)
{
    QVector<RegisterMapRow> rows;
    for (int index = 0; index < map.values.size(); ++index) {
        const RegisterMap::Value &value = map.values.at(index);
        rows.append(rowOf(value, index));
        if (value.fields.isEmpty()) {
            continue;
        }
        if (areFractions(value)) {
            for (const RegisterMap::Field &field : value.fields) {
                rows.last().fractions.append({field.lowestBit, field.width, fractionText(field), field.description});
            }
            // Containers cut the fractions out of the bits as they are in the device.
            rows.last().value.decode = [format = value.format](const quint16 *words) {
                return qint32(format.rawBits(words));
            };
            continue;
        }
        for (const RegisterMap::Field &field : value.fields) {
            rows.append(rowOf(value, field, index));
        }
    }
    setNumbers(rows);
    return rows;
}

ModbusLookup lookupIn(const QVector<RegisterMapRow> &rows, unsigned char moduleAddress)
{
    QHash<quint32, ModbusValue> values;
    for (const RegisterMapRow &row : rows) {
        values.insert(keyOf(row.command, row.motorBank, row.number), row.value);
    }
    return [values, moduleAddress](const Command &request) -> std::optional<ModbusValue> {
        const auto found = values.constFind(keyOf(request.command(), request.motorBank(), request.type()));
        if (request.address() != moduleAddress || found == values.cend()) {
            return std::nullopt;
        }
        return *found;
    };
}
