#include "GuardedTest.h"
#include "PluginHarness.h"
#include "ScriptedModule.h"
#include "XYPlotter.h"

#include "host/AppSettings.h"
#include "host/RegisterSet.h"

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

} // namespace

/// Module and motor boxes, the tables of a page, and what a choice makes of a source.
class SourcesTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void moduleBoxes();
    void motorBoxes();
    void aModuleDrivesItsAxisOfAllCurves();
    void registerRequests();
    void aRowIsRemembered();
    void namesReachThePlot();
    void aBlankRowTurnsTheSourceOff();
    void moduleNotice();

private:
    XYPlotter m_root;
};

void SourcesTest::moduleBoxes()
{
    PluginHarness harness(&m_root);
    harness.open();
    QCOMPARE(harness.moduleBox(0, 'X')->currentIndex(), -1);
    QVERIFY(harness.moduleBox(3, 'Y')->signalsBlocked());
    QVERIFY(harness.motorBox(0, 'X')->isHidden());

    addModule(&harness, QStringLiteral("S/two"), 2);
    QTRY_COMPARE(entries(harness.moduleBox(0, 'X')), QStringList({"  S/two"})); // a lone module can be chosen
    QVERIFY(!harness.moduleBox(0, 'X')->signalsBlocked());
    addModule(&harness, QStringLiteral("S/one"), 1);
    harness.radioButton(2)->click();
    QTRY_COMPARE(entries(harness.moduleBox(3, 'Y')), QStringList({"  S/two", "  S/one"}));
    QVERIFY(harness.radioButton(2)->isChecked()); // the refill clicks through all curves and comes back
    QCOMPARE(harness.find<QStackedWidget>("dockWidgetContentsY")->currentIndex(), 2);
    QCOMPARE(harness.moduleBox(3, 'Y')->currentIndex(), -1);
    QCOMPARE(harness.moduleBox(3, 'Y')->itemData(1).toList(), QVariantList({"S/one", "Scripted"}));

    QVERIFY(PluginHarness::pick(harness.moduleBox(2, 'X'), QStringLiteral("S/one")));
    QVERIFY(harness.table(2, 'X')->model() != nullptr);
    harness.handler.removeModulePlugin(QStringLiteral("S/one"));
    harness.handler.removeModulePlugin(QStringLiteral("S/two"));
    QTRY_VERIFY(harness.table(2, 'X')->model() == nullptr);
    QVERIFY(harness.motorBox(2, 'X')->isHidden());
    QVERIFY(harness.moduleBox(2, 'X')->signalsBlocked());
}

void SourcesTest::motorBoxes()
{
    PluginHarness harness(&m_root);
    addModule(&harness, QStringLiteral("S/three"), 3);
    addModule(&harness, QStringLiteral("S/one"), 1);
    addRegisters(addModule(&harness, QStringLiteral("S/one with registers"), 1));
    addRegisters(addModule(&harness, QStringLiteral("S/registers"), 0));
    addModule(&harness, QStringLiteral("S/nothing"), 0);
    harness.open();
    ComboBox *const box = harness.motorBox(0, 'X');
    QTableView *const table = harness.table(0, 'X');

    QVERIFY(PluginHarness::pick(harness.moduleBox(0, 'X'), QStringLiteral("S/three")));
    QVERIFY(box->isVisible());
    QCOMPARE(entries(box), QStringList({"  Axis 0", "  Axis 1", "  Axis 2"}));
    QCOMPARE(box->currentIndex(), -1);
    QCOMPARE(box->itemData(2).toList(), QVariantList({"S/three", "S/three", "S/three"}));
    QVERIFY(PluginHarness::pick(box, QStringLiteral("Axis 2")));
    QCOMPARE(PluginHarness::rowOf(table, QStringLiteral("Speed 2")), 1);
    QCOMPARE(table->model()->headerData(0, Qt::Horizontal, Qt::UserRole + 6).toString(),
             QStringLiteral("alias of S/three [Axis 2]"));
    QCOMPARE(table->model()->index(0, 2).data(Qt::TextAlignmentRole).toInt(), 132);

    QVERIFY(PluginHarness::pick(harness.moduleBox(0, 'X'), QStringLiteral("S/one")));
    QVERIFY(box->isHidden());
    QVERIFY(table->isVisible()); // a single axis shows its table at once
    QCOMPARE(PluginHarness::rowOf(table, QStringLiteral("Speed 0")), 1);

    QVERIFY(PluginHarness::pick(harness.moduleBox(0, 'X'), QStringLiteral("S/one with registers")));
    QCOMPARE(entries(box), QStringList({"  Axis 0", "  Register"}));
    QVERIFY(PluginHarness::pick(box, QStringLiteral("Register")));
    QCOMPARE(PluginHarness::rowOf(table, QStringLiteral("Status: Speed")), 1);
    QCOMPARE(PluginHarness::rowOf(table, QStringLiteral("Order")), -1); // write-only

    QVERIFY(PluginHarness::pick(harness.moduleBox(0, 'X'), QStringLiteral("S/registers")));
    QCOMPARE(entries(box), QStringList({"  Register"}));
    QCOMPARE(PluginHarness::rowOf(table, QStringLiteral("Counter")), 0);

    QVERIFY(PluginHarness::pick(harness.moduleBox(0, 'X'), QStringLiteral("S/nothing")));
    QVERIFY(box->isHidden());
    QVERIFY(table->isHidden());
}

void SourcesTest::aModuleDrivesItsAxisOfAllCurves()
{
    PluginHarness harness(&m_root);
    ScriptedModule *const first = addModule(&harness, QStringLiteral("S/first"), 1, 5);
    ScriptedModule *const second = addModule(&harness, QStringLiteral("S/second"), 1, 6);
    harness.open();
    QVERIFY(harness.choose(0, 'X', QStringLiteral("S/first"), QString(), QStringLiteral("Speed 0")));
    harness.sampleTick();
    QVERIFY(first->channel.exchanges.isEmpty()); // Y is still off
    QVERIFY(harness.choose(3, 'Y', QStringLiteral("S/second"), QString(), QStringLiteral("Position 0")));
    harness.sampleTick();
    // Curve 0 has its Y channel from curve 3's page, without a request of its own.
    QCOMPARE(first->channel.exchanges.size(), 1);
    QCOMPARE(second->channel.exchanges.size(), 1);
    const Command x = first->channel.exchanges.at(0).at(0);
    QCOMPARE(QList<int>({x.address(), x.command(), x.type(), x.motorBank()}), QList<int>({5, 6, 3, 0}));
    const Command y = second->channel.exchanges.at(0).at(0);
    QCOMPARE(QList<int>({y.address(), y.command()}), QList<int>({6, 0}));
}

void SourcesTest::registerRequests()
{
    PluginHarness harness(&m_root);
    ScriptedModule *const module = addModule(&harness, QStringLiteral("S/m"), 2, 9);
    addRegisters(module);
    module->channelNumber = 1;
    module->channel.answer = [](const Command &request) { return request.type() == 0x2B ? 0xFE12 : 7; };
    harness.open();
    QVERIFY(harness.choose(0, 'X', QStringLiteral("S/m"), QStringLiteral("Register"), QStringLiteral("Counter")));
    QVERIFY(harness.choose(0, 'Y', QStringLiteral("S/m"), QStringLiteral("Register"), QStringLiteral("Status: Speed")));
    harness.sampleTick();
    const QVector<Command> requests = module->channel.exchanges.constLast();
    QCOMPARE(requests.size(), 2);
    QCOMPARE(QList<int>({requests.at(0).command(), requests.at(0).type()}), QList<int>({149, 0x2A}));
    QCOMPARE(QList<int>({requests.at(1).command(), requests.at(1).type()}), QList<int>({149, 0x2B}));
    QCOMPARE(harness.points(), QVector<QPointF>({QPointF(7, 254)}));

    // A click on the box in the row reads the field as signed, and starts the curve anew.
    QTableView *const table = harness.table(0, 'Y');
    const QModelIndex bits = table->model()->index(1, 1);
    table->scrollTo(bits);
    const QRect cell = table->visualRect(bits);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(cell.left() + 10, cell.center().y()));
    QCOMPARE(bits.data(Qt::CheckStateRole).toInt(), static_cast<int>(Qt::Checked));
    harness.sampleTick();
    QCOMPARE(harness.points(), QVector<QPointF>({QPointF(7, -2)}));

    module->channelNumber = 0;
    QVERIFY(PluginHarness::pick(harness.motorBox(0, 'X'), QStringLiteral("Axis 0")));
    QVERIFY(PluginHarness::pick(harness.motorBox(0, 'X'), QStringLiteral("Register")));
    harness.sampleTick();
    QCOMPARE(int(module->channel.exchanges.constLast().at(0).command()), 148);
}

void SourcesTest::aRowIsRemembered()
{
    {
        PluginHarness harness(&m_root);
        addModule(&harness, QStringLiteral("S/m"), 2);
        harness.open();
        QVERIFY(harness.choose(1, 'X', QStringLiteral("S/m"), QStringLiteral("Axis 1"), QStringLiteral("Speed 1")));
    }
    const uint choice = qHash(QStringLiteral("  S/m  Axis 1"), 0);
    AppSettings settings;
    QCOMPARE(settings.value(QStringLiteral("Plot/Table/page1dockWidgetContentsX/%1").arg(choice)).toInt(), 1);

    PluginHarness harness(&m_root);
    ScriptedModule *const module = addModule(&harness, QStringLiteral("S/m"), 2);
    harness.open();
    harness.radioButton(1)->click();
    QVERIFY(PluginHarness::pick(harness.moduleBox(1, 'X'), QStringLiteral("S/m")));
    QCOMPARE(harness.table(1, 'X')->currentIndex().row(), 0); // motor 0, before a motor was picked
    QVERIFY(PluginHarness::pick(harness.motorBox(1, 'X'), QStringLiteral("Axis 1")));
    QCOMPARE(harness.table(1, 'X')->currentIndex().row(), 1);
    // The remembered row is in force without a click.
    QVERIFY(harness.choose(1, 'Y', QStringLiteral("S/m"), QStringLiteral("Axis 0"), QStringLiteral("Position 0")));
    harness.curveBox(0)->click();
    harness.curveBox(1)->click();
    harness.sampleTick();
    const Command x = module->channel.exchanges.constLast().at(0);
    QCOMPARE(QList<int>({x.command(), x.type(), x.motorBank()}), QList<int>({6, 3, 1}));
}

void SourcesTest::namesReachThePlot()
{
    {
        AppSettings settings; // a row that this table no longer has: nothing is chosen
        const uint choice = qHash(QStringLiteral("  S/m"), 0);
        settings.setValue(QStringLiteral("Plot/Table/page2dockWidgetContentsX/%1").arg(choice), 40);
    }
    PluginHarness harness(&m_root);
    addModule(&harness, QStringLiteral("S/m"), 1);
    harness.open();
    QVERIFY(PluginHarness::pick(harness.moduleBox(2, 'X'), QStringLiteral("S/m")));
    QCOMPARE(harness.curveBox(2)->property("dpNameX").toString(), QStringLiteral("X3"));
    QVERIFY(harness.choose(2, 'X', QStringLiteral("S/m"), QString(), QStringLiteral("Speed 0")));
    QVERIFY(harness.choose(2, 'Y', QStringLiteral("S/m"), QString(), QStringLiteral("Position 0")));
    QCOMPARE(harness.curveBox(2)->property("dpNameX").toString(), QStringLiteral("Speed 0 [raw]"));
    QCOMPARE(harness.curveBox(2)->property("dpNameY").toString(), QStringLiteral("Position 0 [raw]"));
    QTest::keyClick(harness.table(2, 'Y'), Qt::Key_Down);
    QTest::keyClick(harness.table(2, 'Y'), Qt::Key_Return);
    QCOMPARE(harness.curveBox(2)->property("dpNameY").toString(), QStringLiteral("Speed 0 [raw]"));
    // One line tells the model of X; there is none for Y.
    const QStringList lines = messages(QtDebugMsg).filter(QRegularExpression(QStringLiteral("^Model   :")));
    QCOMPARE(lines.size(), 1);
    QVERIFY(lines.constFirst().contains(QStringLiteral("alias of S/m [Axis 0]")));
}

void SourcesTest::aBlankRowTurnsTheSourceOff()
{
    PluginHarness harness(&m_root);
    ScriptedModule *const module = addModule(&harness, QStringLiteral("S/m"), 1);
    auto *const bare = new ScriptedModule(QStringLiteral("S/bare"), 1);
    harness.handler.addModulePlugin(bare);
    harness.open();
    QVERIFY(harness.choose(0, 'X', QStringLiteral("S/m"), QString(), QStringLiteral("Speed 0")));
    QVERIFY(harness.choose(0, 'Y', QStringLiteral("S/m"), QString(), QStringLiteral("Position 0")));
    harness.sampleTick();
    QCOMPARE(module->channel.exchanges.size(), 1);
    QVERIFY(PluginHarness::pick(harness.moduleBox(0, 'X'), QStringLiteral("S/bare")));
    QCOMPARE(harness.table(0, 'X')->model()->rowCount(), 1);
    harness.sampleTick();
    QCOMPARE(module->channel.exchanges.size() + bare->channel.exchanges.size(), 1);
}

void SourcesTest::moduleNotice()
{
    PluginHarness harness(&m_root);
    ScriptedModule *const module = addModule(&harness, QStringLiteral("S/m"), 2);
    harness.open();
    QVERIFY(harness.choose(0, 'X', QStringLiteral("S/m"), QStringLiteral("Axis 0"), QStringLiteral("Speed 0")));
    QVERIFY(harness.choose(0, 'Y', QStringLiteral("S/m"), QStringLiteral("Axis 0"), QStringLiteral("Position 0")));
    QLoggingCategory::setFilterRules(QStringLiteral("host.lowlevel.debug=true"));
    addModule(&harness, QStringLiteral("S/late"), 1);
    QLoggingCategory::setFilterRules(QString());
    QCOMPARE(messages(QtDebugMsg)
                 .filter(QStringLiteral("virtual void XYPlotter::handleModulePlugin(KAROModuleInterface*, QString)"))
                 .size(),
             1);
    harness.sampleTick();
    QVERIFY(module->channel.exchanges.isEmpty()); // at once, not when the lists are filled
    QTRY_COMPARE(harness.moduleBox(0, 'X')->count(), 2);
    // The motor box is still filled, though no module is chosen.
    QVERIFY(PluginHarness::pick(harness.motorBox(0, 'X'), QStringLiteral("Axis 1")));
    QVERIFY(PluginHarness::pick(harness.motorBox(0, 'X'), QStringLiteral("Axis 0")));
    QVERIFY(harness.choose(0, 'X', QStringLiteral("S/late"), QString(), QStringLiteral("Speed 0")));
    QVERIFY(harness.choose(0, 'Y', QStringLiteral("S/m"), QStringLiteral("Axis 0"), QStringLiteral("Position 0")));
    harness.sampleTick();
    QCOMPARE(module->channel.exchanges.size(), 1);
}

GUARDED_TEST_MAIN(SourcesTest)
#include "SourcesTest.moc"
