#include "AxisCombo.h"
#include "ElapsedText.h"
#include "GuardedTest.h"
#include "ParameterTable.h"
#include "ScriptedModule.h"
#include "TableRoles.h"

#include "host/ExportCSV.h"
#include "host/RegisterSet.h"

#include <QStandardItemModel>

// Where the plugin puts the module captions of a table, the substitute's export window looks for them.
static_assert(TableRole::Caption == ExportCSV::captionRole, "one role for module captions");

namespace
{

/// The rows of a table as "name: texts of the other columns; data of the request", a dash for missing data.
QStringList rowsOf(const QStandardItemModel &model)
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
        const auto cell = [&](int column, int role) {
            const QString text = model.index(row, column).data(role).toString();
            return text.isEmpty() ? QStringLiteral(" -") : QLatin1Char(' ') + text;
        };
        rows.append(model.index(row, TableColumn::Name).data().toString() + QLatin1Char(':') +
                    cell(TableColumn::Command, Qt::DisplayRole) + cell(TableColumn::Type, Qt::DisplayRole) +
                    QLatin1Char(';') + cell(TableColumn::Command, TableRole::Command) +
                    cell(TableColumn::Command, TableRole::MotorBank) + cell(TableColumn::Type, TableRole::Type) +
                    cell(TableColumn::Type, TableRole::BitOffset) + cell(TableColumn::Type, TableRole::BitWidth));
    }
    return rows;
}

} // namespace

/// Without widgets: the values of a module, the request of a row, and the value in a reply.
class DecodingTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void bitField_data()
    {
        QTest::addColumn<quint32>("answer");
        QTest::addColumn<int>("offset");
        QTest::addColumn<int>("width");
        QTest::addColumn<bool>("isSigned");
        QTest::addColumn<qint32>("value");

        QTest::newRow("byte, signed, all ones") << 0xFFU << 0 << 8 << true << -1;
        QTest::newRow("byte, unsigned") << 0xFFU << 0 << 8 << false << 255;
        QTest::newRow("nibble within, negative") << 0xF0U << 4 << 4 << true << -1;
        QTest::newRow("31 bit, signed") << 0x7FFFFFFFU << 0 << 31 << true << -1;
        QTest::newRow("whole, unsigned, top bit set") << 0x80000001U << 0 << 32 << false << -0x7FFFFFFF;
        QTest::newRow("wider than whole") << 0xFFFFFFFEU << 0 << 200 << true << -2;
        QTest::newRow("top nibble, the answer's sign shifted in") << 0x90000000U << 28 << 4 << false << 9;
        QTest::newRow("whole after a shift keeps the sign") << 0x80000000U << 31 << 32 << false << -1;
        QTest::newRow("no width") << 0xFFFFFFFFU << 0 << 0 << false << 0;
        QTest::newRow("offset beyond the value: modulo 32") << 0xF0U << 36 << 4 << false << 15;
    }

    void bitField()
    {
        QFETCH(quint32, answer);
        QFETCH(int, offset);
        QFETCH(int, width);
        QFETCH(bool, isSigned);
        AxisCombo source(nullptr, 7);
        source.setRequest(&source.request, static_cast<unsigned char>(offset), static_cast<unsigned char>(width),
                          isSigned);
        source.reply.setValue(static_cast<qint32>(answer));
        QTEST(source.value(), "value");
    }

    void elapsedTime()
    {
        QCOMPARE(elapsedText(10'000'000), QStringLiteral("10000 µs"));
        QCOMPARE(elapsedText(10'000'001), QStringLiteral("  10 ms"));
        QCOMPARE(elapsedText(2'350'000), QStringLiteral(" 2400 µs")); // in steps of 100
    }

    void axisTable()
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
        QCOMPARE(rowsOf(model),
                 QStringList({"zero [raw]: GAP 0; 6 2 0 - -", "first key of 4 [raw]: GAP 4; 6 2 4 - -",
                              "last [raw]: GAP 255; 6 2 255 - -", "variable [raw]: GGP 7; 10 2 7 - -",
                              "digital in [raw]: GIO 1; 15 0 1 - -", "same number [raw]: GIO 1; 15 0 1 - -",
                              "digital out [raw]: GIO 3; 15 2 3 - -", "analog in [raw]: GIO 2; 15 1 2 - -"}));
    }

    void registerTable()
    {
        Register whole(0x2A, 32, "Whole", "all bits");
        Register narrow(0x2B, 3, "Narrow", "");
        RegisterSet emptySet(0x10, 16, "Empty set", "");
        RegisterSet four(0x16C, 32, "Four", "");
        four.addFraction(24, 8, "D");
        four.addFraction(0, 4, "A");
        four.addFraction(4, 3, "flags");
        four.addFraction(8, 16, "C");
        RegisterSet five(0x11, 32, "Five", "");
        for (int bit = 0; bit < 20; bit += 4) {
            five.addFraction(bit, 4, QString::number(bit));
        }
        QStandardItemModel model(1, 3);
        ParameterTable::fillRegisterTable(&model, {&whole, &narrow, &emptySet, &four, &five}, 149, QIcon());
        QCOMPARE(rowsOf(model), // only the low 8 bits of an address
                 QStringList({"Empty set: 0x10 [15..0]; 149 0 16 0 16", "Four: A: 0x6C [3..0]; 149 0 108 0 4",
                              "Four: C: 0x6C [23..8]; 149 0 108 8 16", "Four: D: 0x6C [31..24]; 149 0 108 24 8",
                              "Whole: 0x2A [31..0]; 149 0 42 0 32"}));
        QVERIFY(model.item(0, 1)->isCheckable());
        QCOMPARE(model.item(4, 2)->toolTip(), QStringLiteral("all bits"));
    }
};

GUARDED_TEST(DecodingTest)
#include "DecodingTest.moc"
