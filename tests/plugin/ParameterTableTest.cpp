#include "ParameterTable.h"
#include "GuardedTest.h"
#include "ScriptedModule.h"
#include "TableRoles.h"

#include "host/RegisterSet.h"

#include <QStandardItemModel>

namespace
{

QStringList row(const QStandardItemModel &model, int number)
{
    QStringList texts;
    for (int column = 0; column < model.columnCount(); ++column) {
        texts.append(model.index(number, column).data().toString());
    }
    return texts;
}

QList<int> numbers(const QStandardItemModel &model, int number)
{
    QList<int> found;
    for (const int role : {TableRole::Command, TableRole::MotorBank}) {
        found.append(model.index(number, TableColumn::Command).data(role).toInt());
    }
    for (const int role : {TableRole::Type, TableRole::BitOffset, TableRole::BitWidth}) {
        const QVariant value = model.index(number, TableColumn::Type).data(role);
        found.append(value.isValid() ? value.toInt() : -1);
    }
    return found;
}

QStringList names(const QStandardItemModel &model)
{
    QStringList texts;
    for (int number = 0; number < model.rowCount(); ++number) {
        texts.append(model.index(number, TableColumn::Name).data().toString());
    }
    return texts;
}

} // namespace

/// Which values of a module are offered, in which order, and what a row tells about its request.
class ParameterTableTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void axisTable();
    void axisTableOfAModuleWithoutParameters();
    void registerTable();
};

void ParameterTableTest::axisTable()
{
    ScriptedModule module(QStringLiteral("S/m"), 3);
    module.addParameter("axis2", "par::b", 4, "second key of 4");
    module.addParameter("axis2", "par::a", 4, "first key of 4", "r");
    module.addParameter("axis2", "par::0", 4, "write only", "w");
    module.addParameter("axis2", "other::0", 3, "no parameter key");
    module.addParameter("axis2", "par::last", 255, "last");
    module.addParameter("axis2", "par::zero", 0, "zero");
    module.addParameter("axis2", "par::beyond", 256, "beyond a byte");
    module.addParameter("axis0", "par::zero", 0, "another axis");
    module.addParameter("global2", "any key", 7, "variable");
    module.addParameter("io0", "in", 1, "digital in");
    module.addParameter("io0", "in again", 1, "same number");
    module.addParameter("io1", "analog", 2, "analog in");
    module.addParameter("io2", "out", 3, "digital out");
    module.addParameter("io2", "hidden", 4, "write only out", "w");

    QStandardItemModel model(1, 3);
    ParameterTable::fillAxisTable(&model, &module, 2);

    QCOMPARE(names(model),
             QStringList({"zero [raw]", "first key of 4 [raw]", "last [raw]", "variable [raw]", "digital in [raw]",
                          "same number [raw]", "digital out [raw]", "analog in [raw]"}));
    QCOMPARE(row(model, 1), QStringList({"GAP", "4", "first key of 4 [raw]"}));
    QCOMPARE(numbers(model, 1), QList<int>({6, 2, 4, -1, -1}));
    QCOMPARE(row(model, 3), QStringList({"GGP", "7", "variable [raw]"}));
    QCOMPARE(numbers(model, 3), QList<int>({10, 2, 7, -1, -1}));
    QCOMPARE(numbers(model, 4), QList<int>({15, 0, 1, -1, -1}));
    QCOMPARE(numbers(model, 6), QList<int>({15, 2, 3, -1, -1}));
    QCOMPARE(numbers(model, 7), QList<int>({15, 1, 2, -1, -1}));
    QCOMPARE(model.item(1, 0)->statusTip(), QStringLiteral("KARO_GAP"));
    QCOMPARE(model.item(1, 2)->statusTip(), QStringLiteral("Axis parameter (Motor 2)"));
    QCOMPARE(model.item(3, 2)->toolTip(), QStringLiteral("Bank 2"));
    QCOMPARE(model.item(6, 2)->toolTip(), QStringLiteral("Axis 2"));
    QCOMPARE(model.item(7, 2)->statusTip(), QStringLiteral("Analog input (Motor 1)"));
    QCOMPARE(model.horizontalHeaderItem(0)->text(), QStringLiteral("Cmd"));
}

void ParameterTableTest::axisTableOfAModuleWithoutParameters()
{
    ScriptedModule module(QStringLiteral("S/m"));
    QStandardItemModel model(1, 3);
    ParameterTable::fillAxisTable(&model, &module, 0);
    QCOMPARE(names(model), QStringList({QString()})); // one blank row, which turns a source off
}

void ParameterTableTest::registerTable()
{
    Register whole(0x2A, 32, "Whole", "all bits");
    Register narrow(0x2B, 3, "Narrow", "");
    RegisterSet emptySet(0x10, 16, "Empty set", "");
    RegisterSet four(0x16C, 32, "Four", "");
    four.addFraction(24, 8, "D");
    four.addFraction(0, 4, "A", "low nibble");
    four.addFraction(4, 3, "flags");
    four.addFraction(8, 16, "C");
    RegisterSet five(0x11, 32, "Five", "");
    for (int bit = 0; bit < 20; bit += 4) {
        five.addFraction(bit, 4, QString::number(bit));
    }
    QStandardItemModel model(1, 3);
    ParameterTable::fillRegisterTable(&model, {&whole, &narrow, &emptySet, &four, &five}, 149);

    QCOMPARE(names(model), QStringList({"Empty set", "Four: A", "Four: C", "Four: D", "Whole"}));
    QCOMPARE(row(model, 0), QStringList({"0x10", "[15..0]", "Empty set"}));
    QCOMPARE(row(model, 2), QStringList({"0x6C", "[23..8]", "Four: C"})); // the address' low 8 bits
    QCOMPARE(numbers(model, 2), QList<int>({149, 0, 0x6C, 8, 16}));
    QCOMPARE(row(model, 4), QStringList({"0x2A", "[31..0]", "Whole"}));
    QCOMPARE(numbers(model, 4), QList<int>({149, 0, 0x2A, 0, 32}));
    QCOMPARE(model.item(1, 0)->toolTip(), QStringLiteral("\nRegister Four\n"));
    QCOMPARE(model.item(1, 2)->toolTip(), QStringLiteral("low nibble"));
    QCOMPARE(model.item(4, 2)->toolTip(), QStringLiteral("all bits"));
    for (int number = 0; number < model.rowCount(); ++number) {
        const QStandardItem *const bits = model.item(number, 1);
        QVERIFY(bits->isCheckable());
        QCOMPARE(bits->checkState(), Qt::Unchecked);
        QCOMPARE(bits->toolTip(), QStringLiteral("\nSet checked for signed interpretation\n"));
        QVERIFY(!bits->icon().isNull());
    }
    QCOMPARE(model.horizontalHeaderItem(1)->text(), QStringLiteral("Mapped bits"));
}

GUARDED_TEST_MAIN(ParameterTableTest)
#include "ParameterTableTest.moc"
