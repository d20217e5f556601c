#include "modules/modbus/RegisterMapCheck.h"

#include "modules/modbus/RegisterMapRows.h"
#include "reading/FieldReader.h"

#include <QCoreApplication>
#include <QHash>

#include <algorithm>

namespace
{

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(RegisterMapCheck)
};

QString placeOf(int valueIndex)
{
    return FieldReader::placeOf(QString(), QStringLiteral("values"), valueIndex);
}

bool isBefore(const RegisterMap::Value &a, const RegisterMap::Value &b)
{
    return a.span.table == b.span.table ? a.span.address < b.span.address : a.span.table < b.span.table;
}

int endOf(const RegisterSpan &span)
{
    return int(span.address) + int(span.count);
}

void checkOverlaps(FieldReader &reader, const RegisterMap &map)
{
    QVector<int> order(map.values.size());
    std::generate(order.begin(), order.end(), [next = 0]() mutable { return next++; });
    std::stable_sort(order.begin(), order.end(),
                     [&map](int a, int b) { return isBefore(map.values.at(a), map.values.at(b)); });
    for (int i = 1; i < order.size(); ++i) {
        const RegisterMap::Value &lower = map.values.at(order.at(i - 1));
        const RegisterMap::Value &upper = map.values.at(order.at(i));
        if (lower.span.table != upper.span.table || endOf(lower.span) <= int(upper.span.address)) {
            continue;
        }
        // The later of the two in the file is the one to be moved.
        const bool isUpperLater = order.at(i) > order.at(i - 1);
        const RegisterMap::Value &earlier = isUpperLater ? lower : upper;
        reader.addError(placeOf(std::max(order.at(i), order.at(i - 1))), QStringLiteral("address"),
                        lower.span.address == upper.span.address && lower.span.count == upper.span.count
                            ? Text::tr("an address that no other value has, but \"%1\" has it").arg(earlier.name)
                            : Text::tr("an address beside that of \"%1\", which it overlaps").arg(earlier.name));
        return;
    }
}

/// Rows that are listed together: those of an axis with those of the module, and registers by themselves.
void checkNames(FieldReader &reader, const QVector<RegisterMapRow> &rows)
{
    QHash<QString, int> firstOfModule;
    QHash<QString, int> firstOfRegisters;
    QHash<QString, int> firstOfAxes;
    for (const RegisterMapRow &row : rows) {
        QHash<QString, int> *names = row.group == RegisterMap::Group::Register ? &firstOfRegisters : &firstOfModule;
        QString name = row.name;
        if (row.group == RegisterMap::Group::Axis) {
            names = &firstOfAxes;
            name.prepend(row.mapName + QLatin1Char('/'));
        }
        if (names->contains(name)) {
            reader.addError(placeOf(row.valueIndex), QStringLiteral("name"),
                            Text::tr("a name that no other value beside it has, but \"%1\" is also that of %2")
                                .arg(row.name, placeOf(names->value(name))));
        }
        names->insert(name, row.valueIndex);
    }
    for (const RegisterMapRow &row : rows) {
        if (row.group == RegisterMap::Group::Axis && firstOfModule.contains(row.name)) {
            reader.addError(placeOf(row.valueIndex), QStringLiteral("name"),
                            Text::tr("a name that no value of the module has, but \"%1\" is also that of %2")
                                .arg(row.name, placeOf(firstOfModule.value(row.name))));
        }
    }
}

void checkCounts(FieldReader &reader, const QVector<RegisterMapRow> &rows)
{
    constexpr int maximumRows = RegisterMapRow::maximumNumber + 1;
    for (const RegisterMapRow &row : rows) {
        if (row.number > RegisterMapRow::maximumNumber) {
            reader.addError(QString(), placeOf(row.valueIndex),
                            Text::tr("at most %1 values and fields on an axis or in a group").arg(maximumRows));
            return;
        }
    }
}

void checkAxes(FieldReader &reader, const RegisterMap &map)
{
    const int axes = map.axisCount();
    QVector<bool> hasValue(axes, false);
    for (const RegisterMap::Value &value : map.values) {
        if (value.group == RegisterMap::Group::Axis) {
            hasValue[value.axis] = true;
        }
    }
    const int missing = hasValue.indexOf(false);
    for (int index = 0; index < map.values.size(); ++index) {
        const RegisterMap::Value &value = map.values.at(index);
        if (missing >= 0 && value.group == RegisterMap::Group::Axis && value.axis > missing) {
            reader.addError(placeOf(index), QStringLiteral("axis"),
                            Text::tr("axes from 0 on without a gap, but axis %1 has no value").arg(missing));
        }
        if (axes == 0 && value.group != RegisterMap::Group::Register) {
            reader.addError(placeOf(index), QStringLiteral("group"),
                            Text::tr("\"register\", because a device without an axis shows registers only"));
        }
    }
}

} // namespace

void checkRegisterMap(FieldReader &reader, const RegisterMap &map)
{
    const QVector<RegisterMapRow> rows = registerMapRows(map);
    checkOverlaps(reader, map);
    checkNames(reader, rows);
    checkCounts(reader, rows);
    checkAxes(reader, map);
}
