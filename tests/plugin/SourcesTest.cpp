#include "GuardedTest.h"
#include "PluginHarness.h"
#include "ScriptedModule.h"
#include "TableRoles.h"
#include "XYPlotter.h"

#include "host/AppSettings.h"
#include "host/ExportCSV.h"
#include "host/RegisterSet.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>

namespace
{

ScriptedModule *addModule(PluginHarness *harness, const QString &key, int axes, unsigned char address = 1)
{
    auto *const module = new ScriptedModule(key, axes, address);
    for (int axis = 0; axis < axes; ++axis) {
        const QString group = QStringLiteral("axis%1").arg(axis);
        module->addParameter(group, "par::position", 1, QStringLiteral("Position %1").arg(axis));
        module->addParameter(group, "par::speed", 3, QStringLiteral("Speed %1").arg(axis));
    }
    harness->handler.addModulePlugin(module);
    return module;
}

void addRegisters(ScriptedModule *module)
{
    module->registerList.append(new Register(0x2A, 32, "Counter", "", Register::Readable, module));
    auto *const set = new RegisterSet(0x2B, 16, "Status", "", Register::ReadableAndWritable, module);
    set->addFraction(8, 8, "Speed");
    module->registerList.append(set);
    module->registerList.append(new Register(0x2C, 32, "Order", "", Register::Writable, module));
}

QStringList entries(const ComboBox *box)
{
    QStringList texts;
    for (int index = 0; index < box->count(); ++index) {
        texts.append(box->itemText(index));
    }
    return texts;
}

QList<int> numbers(const Command &request)
{
    return {request.address(), request.command(), request.type(), request.motorBank()};
}

} // namespace

/// Module and motor boxes, the tables of values, and the sources that are chosen in them.
class SourcesTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void moduleBoxes()
    {
        PluginHarness harness(&m_root);
        harness.open();
        QCOMPARE(harness.moduleBox(0, 'X')->currentIndex(), -1);
        QVERIFY(harness.moduleBox(3, 'Y')->signalsBlocked());
        QVERIFY(harness.motorBox(0, 'X')->isHidden());

        addModule(&harness, "S/two", 2);
        QTRY_COMPARE(entries(harness.moduleBox(0, 'X')), QStringList({"  S/two"})); // a lone module can be chosen
        QVERIFY(!harness.moduleBox(0, 'X')->signalsBlocked());
        addModule(&harness, "S/one", 1);
        harness.radioButton(2)->click();
        QTRY_COMPARE(entries(harness.moduleBox(3, 'Y')), QStringList({"  S/two", "  S/one"}));
        QVERIFY(harness.radioButton(2)->isChecked()); // the refill selects all curves, and this one at last
        QCOMPARE(harness.find<QStackedWidget>("dockWidgetContentsY")->currentIndex(), 2);
        QCOMPARE(harness.moduleBox(3, 'Y')->currentIndex(), -1);

        QVERIFY(PluginHarness::pick(harness.moduleBox(2, 'X'), "S/one"));
        QVERIFY(harness.table(2, 'X')->model() != nullptr);
        harness.handler.removeModulePlugin("S/one");
        harness.handler.removeModulePlugin("S/two");
        QTRY_VERIFY(harness.table(2, 'X')->model() == nullptr);
        QVERIFY(harness.motorBox(2, 'X')->isHidden());
        QVERIFY(harness.moduleBox(2, 'X')->signalsBlocked());
    }

    void motorBoxes()
    {
        PluginHarness harness(&m_root);
        addModule(&harness, "S/three", 3);
        addModule(&harness, "S/one", 1);
        addRegisters(addModule(&harness, "S/one with registers", 1));
        addRegisters(addModule(&harness, "S/registers", 0));
        addModule(&harness, "S/nothing", 0);
        harness.open();
        const struct
        {
            QString module;
            QStringList motors;
            QString motor; // to be picked
            QString value;
            int row; // of the value
        } rows[] = {{"S/three", {"  Axis 0", "  Axis 1", "  Axis 2"}, "Axis 2", "Speed 2", 1},
                    {"S/one", {}, "", "Speed 0", 1}, // a single axis shows its table at once
                    {"S/one with registers", {"  Axis 0", "  Register"}, "Register", "Status: Speed", 1},
                    {"S/one with registers", {"  Axis 0", "  Register"}, "Register", "Order", -1}, // write-only
                    {"S/registers", {"  Register"}, "", "Counter", 0},
                    {"S/nothing", {}, "", "", -1}};
        ComboBox *const motors = harness.motorBox(0, 'X');
        const QTableView *const table = harness.table(0, 'X');
        for (const auto &row : rows) {
            harness.moduleBox(0, 'X')->setCurrentIndex(-1);
            QVERIFY(PluginHarness::pick(harness.moduleBox(0, 'X'), row.module));
            QCOMPARE(motors->isVisible(), !row.motors.isEmpty());
            QCOMPARE(motors->currentIndex(), -1);
            if (motors->isVisible()) {
                QCOMPARE(entries(motors), row.motors);
            }
            QVERIFY(row.motor.isEmpty() || PluginHarness::pick(motors, row.motor));
            QCOMPARE(table->isVisible() ? PluginHarness::rowOf(table, row.value) : -1, row.row);
        }
    }

    void moduleIsBoundForAllCurves()
    {
        PluginHarness harness(&m_root);
        ScriptedModule *const first = addModule(&harness, "S/first", 1, 5);
        ScriptedModule *const second = addModule(&harness, "S/second", 1, 6);
        auto *const bare = new ScriptedModule("S/bare", 1); // its table is one blank row
        harness.handler.addModulePlugin(bare);
        harness.open();
        QVERIFY(harness.choose(0, 'X', "S/first", "", "Speed 0"));
        harness.sampleTick();
        QVERIFY(first->channel.exchanges.isEmpty()); // Y is still off
        QVERIFY(harness.choose(3, 'Y', "S/second", "", "Position 0"));
        harness.sampleTick();
        // Curve 0 has its Y channel from curve 3's page, without a request of its own.
        QCOMPARE(first->channel.exchanges.size(), 1);
        QCOMPARE(second->channel.exchanges.size(), 1);
        QCOMPARE(numbers(first->channel.exchanges.at(0).at(0)), QList<int>({5, 6, 3, 0}));
        QCOMPARE(numbers(second->channel.exchanges.at(0).at(0)), QList<int>({6, 0, 0, 0}));

        harness.radioButton(0)->click();
        QVERIFY(PluginHarness::pick(harness.moduleBox(0, 'X'), "S/bare"));
        QCOMPARE(harness.table(0, 'X')->model()->rowCount(), 1);
        harness.sampleTick();
        QCOMPARE(second->channel.exchanges.size() + bare->channel.exchanges.size(), 1); // turned off
    }

    void registerRequests()
    {
        PluginHarness harness(&m_root);
        ScriptedModule *const module = addModule(&harness, "S/m", 2, 9);
        addRegisters(module);
        module->channelNumber = 1;
        module->channel.answer = [](const Command &request) { return request.type() == 0x2B ? 0xFE12 : 7; };
        harness.open();
        QVERIFY(harness.choose(0, 'X', "S/m", "Register", "Counter"));
        QVERIFY(harness.choose(0, 'Y', "S/m", "Register", "Status: Speed"));
        harness.sampleTick();
        QCOMPARE(numbers(module->channel.exchanges.constLast().at(0)), QList<int>({9, 149, 0x2A, 0}));
        QCOMPARE(numbers(module->channel.exchanges.constLast().at(1)), QList<int>({9, 149, 0x2B, 0}));
        QCOMPARE(harness.points(), QVector<QPointF>({QPointF(7, 254)}));

        // A click on the box in the row makes the field signed, and clears the curve.
        QTableView *const table = harness.table(0, 'Y');
        const QRect cell = table->visualRect(table->model()->index(1, 1));
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, QPoint(cell.left() + 10, cell.center().y()));
        harness.sampleTick();
        QCOMPARE(harness.points(), QVector<QPointF>({QPointF(7, -2)}));
        QTest::keyClick(table, Qt::Key_Left);
        QTest::keyClick(table, Qt::Key_Space); // as a click does
        harness.sampleTick();
        QCOMPARE(harness.points(), QVector<QPointF>({QPointF(7, 254)}));

        module->channelNumber = 0;
        QVERIFY(PluginHarness::pick(harness.motorBox(0, 'X'), "Axis 0"));
        QVERIFY(PluginHarness::pick(harness.motorBox(0, 'X'), "Register"));
        harness.sampleTick();
        QCOMPARE(int(module->channel.exchanges.constLast().at(0).command()), 148);
    }

    void aRowIsRemembered()
    {
        {
            PluginHarness harness(&m_root);
            addModule(&harness, "S/m", 2);
            harness.open();
            QVERIFY(harness.choose(1, 'X', "S/m", "Axis 1", "Position 1"));
            QTest::keyClick(harness.table(1, 'X'), Qt::Key_Down);
            QTest::keyClick(harness.table(1, 'X'), Qt::Key_Return);
            QCOMPARE(harness.curveBox(1)->property("dpNameX").toString(), QStringLiteral("Speed 1 [raw]"));
        }
        PluginHarness harness(&m_root);
        ScriptedModule *const module = addModule(&harness, "S/m", 2);
        harness.open();
        harness.radioButton(1)->click();
        QVERIFY(PluginHarness::pick(harness.moduleBox(1, 'X'), "S/m"));
        QCOMPARE(harness.table(1, 'X')->currentIndex().row(), 0); // motor 0, before a motor was picked
        QVERIFY(PluginHarness::pick(harness.motorBox(1, 'X'), "Axis 1"));
        QCOMPARE(harness.table(1, 'X')->currentIndex().row(), 1);
        // The remembered row is chosen without a click.
        QVERIFY(harness.choose(1, 'Y', "S/m", "Axis 0", "Position 0"));
        harness.curveBox(0)->click();
        harness.curveBox(1)->click();
        harness.sampleTick();
        QCOMPARE(numbers(module->channel.exchanges.constLast().at(0)), QList<int>({1, 6, 3, 1}));

        PluginHarness other(&m_root, "Another clone"); // remembers for itself
        addModule(&other, "S/m", 2);
        other.open();
        other.radioButton(1)->click();
        QVERIFY(PluginHarness::pick(other.moduleBox(1, 'X'), "S/m"));
        QVERIFY(PluginHarness::pick(other.motorBox(1, 'X'), "Axis 1"));
        QCOMPARE(other.table(1, 'X')->currentIndex().row(), 0);
    }

    void everyGestureChoosesOnce_data()
    {
        QTest::addColumn<int>("clicks");
        QTest::addColumn<int>("key"); // or 0
        QTest::addColumn<int>("choices");
        QTest::newRow("click") << 1 << 0 << 1;
        QTest::newRow("double click") << 2 << 0 << 1;
        QTest::newRow("Enter") << 0 << int(Qt::Key_Return) << 1; // which must not press the default button
        QTest::newRow("Enter of the keypad") << 0 << int(Qt::Key_Enter) << 1;
        QTest::newRow("space where there is no box") << 0 << int(Qt::Key_Space) << 0;
        QTest::newRow("arrow") << 0 << int(Qt::Key_Up) << 0;
    }

    void everyGestureChoosesOnce()
    {
        QFETCH(int, clicks);
        QFETCH(int, key);
        for (const bool activatesOnSingleClick : {false, true}) {
            PluginHarness harness(&m_root);
            addModule(&harness, "S/m", 1);
            harness.open();
            auto *const defaultButton = new QPushButton("Default", harness.window);
            defaultButton->setDefault(true);
            defaultButton->show();
            const QSignalSpy pressed(defaultButton, SIGNAL(clicked()));
            QVERIFY(harness.choose(0, 'X', "S/m", "", "Speed 0"));
            QTableView *const table = harness.table(0, 'X');
            table->setStyleSheet(QStringLiteral("activate-on-singleclick: %1").arg(int(activatesOnSingleClick)));
            const int before = messages(QtDebugMsg).filter("Model   :").size();
            const QPoint cell = table->visualRect(table->currentIndex()).center();
            if (clicks > 0) {
                QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, cell);
            }
            if (clicks > 1) {
                QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, cell);
                QTest::mouseRelease(table->viewport(), Qt::LeftButton, {}, cell);
            }
            if (key != 0) {
                QTest::keyClick(table, Qt::Key(key), key == Qt::Key_Enter ? Qt::KeypadModifier : Qt::NoModifier);
            }
            QTEST(messages(QtDebugMsg).filter("Model   :").size() - before, "choices");
            QCOMPARE(pressed.size(), 0);
        }
    }

    void unusedTablesAreDeleted()
    {
        PluginHarness harness(&m_root);
        addRegisters(addModule(&harness, "S/m", 2));
        // Behind the end of the second axis' table: picking that axis chooses nothing.
        const uint choice = qHash(QStringLiteral("  S/m  Axis 1"), 0);
        AppSettings().setValue(QStringLiteral("Plot/Table/page0dockWidgetContentsX/%1").arg(choice), 99);
        harness.open();
        QVERIFY(harness.choose(0, 'X', "S/m", "Axis 0", "Speed 0"));
        QVERIFY(harness.choose(0, 'Y', "S/m", "Axis 0", "Position 0"));
        harness.sampleTick();
        QVERIFY(PluginHarness::pick(harness.motorBox(0, 'X'), "Axis 1"));
        const auto turn = [] { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); };
        const auto tables = [&] {
            turn();
            turn(); // for objects that deleted ones delete later
            return harness.plugin->findChildren<QStandardItemModel *>(QString(), Qt::FindDirectChildrenOnly).size();
        };
        QCOMPARE(tables(), 3); // X's, its shown one, Y's
        QCOMPARE(harness.exported()->headerData(0, Qt::Horizontal, TableRole::Caption).toString(),
                 QStringLiteral("alias of S/m [Axis 0]")); // still of the table that was replaced
        delete harness.window->findChild<ExportCSV *>();

        QVERIFY(PluginHarness::pick(harness.motorBox(0, 'X'), "Register"));
        QCOMPARE(tables(), 2);
        const int objects = harness.window->findChildren<QObject *>().size();
        for (int round = 0; round < 20; ++round) {
            harness.motorBox(0, 'X')->setCurrentIndex(0);
            harness.motorBox(0, 'X')->setCurrentIndex(2);
        }
        for (int round = 0; round < 5; ++round) {
            QTest::mouseClick(harness.find("btnExport"), Qt::LeftButton);
            turn();
        }
        QCOMPARE(tables(), 3); // of the last export, which is shown
        harness.window->findChild<ExportCSV *>()->close();
        QCOMPARE(tables(), 2);
        QCOMPARE(harness.window->findChildren<QObject *>().size(), objects); // selection models are deleted, too
        // All rows and tables share one icon: separate ones would have separate pixmaps.
        const auto iconOf = [&harness](int row) {
            return harness.table(0, 'X')->model()->index(row, 1).data(Qt::DecorationRole).value<QIcon>().cacheKey();
        };
        const qint64 icon = iconOf(0);
        QCOMPARE(iconOf(1), icon);
        harness.motorBox(0, 'X')->setCurrentIndex(0);
        harness.motorBox(0, 'X')->setCurrentIndex(2);
        QCOMPARE(iconOf(0), icon);
    }

    /// A refill on request goes on sampling; one for a new module does not.
    void refills()
    {
        PluginHarness harness(&m_root);
        ScriptedModule *const module = addModule(&harness, "S/m", 2);
        harness.open();
        QVERIFY(harness.choose(0, 'X', "S/m", "Axis 0", "Speed 0"));
        QVERIFY(harness.choose(0, 'Y', "S/m", "Axis 0", "Position 0"));
        harness.radioButton(2)->click();
        QTest::mouseClick(harness.find("btnRefresh"), Qt::LeftButton);
        QCOMPARE(harness.moduleBox(0, 'X')->currentIndex(), -1);
        QCOMPARE(harness.moduleBox(3, 'Y')->currentIndex(), -1);
        QVERIFY(harness.radioButton(2)->isChecked());
        harness.sampleTick();
        QCOMPARE(module->channel.exchanges.size(), 1);

        harness.radioButton(0)->click();
        addModule(&harness, "S/late", 1);
        harness.sampleTick();
        QCOMPARE(module->channel.exchanges.size(), 1); // switched off at once, before the lists are refilled
        QTRY_COMPARE(harness.moduleBox(0, 'X')->count(), 2);
        // The motor box is still filled, though no module is chosen.
        QVERIFY(PluginHarness::pick(harness.motorBox(0, 'X'), "Axis 1"));
        QVERIFY(PluginHarness::pick(harness.motorBox(0, 'X'), "Axis 0"));
        QVERIFY(harness.choose(0, 'X', "S/late", "", "Speed 0"));
        harness.sampleTick();
        QCOMPARE(module->channel.exchanges.size(), 1); // the notice has switched off Y, too
        QVERIFY(harness.choose(0, 'Y', "S/m", "Axis 0", "Position 0"));
        harness.sampleTick();
        QCOMPARE(module->channel.exchanges.size(), 2);
    }

private:
    XYPlotter m_root;
};

GUARDED_TEST(SourcesTest)
#include "SourcesTest.moc"
