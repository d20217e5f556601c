#include "GuardedTest.h"
#include "PluginHarness.h"
#include "ScriptedModule.h"
#include "XYPlotter.h"

#include "host/AppSettings.h"
#include "host/ExportCSV.h"

#include <QStackedWidget>

namespace
{

void addModule(PluginHarness *harness, qint32 *value)
{
    auto *const module = new ScriptedModule(QStringLiteral("S/m"), 1);
    module->addParameter("axis0", "par::x", 1, "first");
    module->addParameter("axis0", "par::y", 2, "second");
    module->channel.answer = [value](const Command &request) { return *value * request.type(); };
    harness->handler.addModulePlugin(module);
}

void chooseBoth(PluginHarness *harness, int curve)
{
    QVERIFY(harness->choose(curve, 'X', QStringLiteral("S/m"), QString(), QStringLiteral("first")));
    QVERIFY(harness->choose(curve, 'Y', QStringLiteral("S/m"), QString(), QStringLiteral("second")));
}

} // namespace

/// The buttons of the window.
class CommandsTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void selectingACurve();
    void screenshot();
    void exportTable();
    void exportCountsByAnotherRuleThanItFills();
    void exportWithoutPoints();
    void clear();

private:
    XYPlotter m_root;
};

void CommandsTest::selectingACurve()
{
    PluginHarness harness(&m_root);
    harness.open();
    QTest::mouseClick(harness.radioButton(3), Qt::LeftButton, Qt::NoModifier,
                      QPoint(10, harness.radioButton(3)->height() / 2));
    QCOMPARE(harness.find<QStackedWidget>("dockWidgetContentsX")->currentIndex(), 3);
    QCOMPARE(harness.find<QStackedWidget>("dockWidgetContentsY")->currentIndex(), 3);
}

void CommandsTest::screenshot()
{
    AppSettings().setValue(QStringLiteral("Pictures/Folder"), temporaryPath(QStringLiteral("pictures")));
    PluginHarness harness(&m_root);
    harness.open();
    QTest::mouseClick(harness.find("btnCamera"), Qt::LeftButton);
    const QStringList told = messages(QtInfoMsg);
    QCOMPARE(told.size(), 1);
    QVERIFY(QFileInfo(told.constFirst()).fileName().startsWith(QStringLiteral("xyp")));
    QCOMPARE(QImage(told.constFirst()).size(), harness.plot()->size());
}

void CommandsTest::exportTable()
{
    PluginHarness harness(&m_root);
    qint32 value = 0;
    addModule(&harness, &value);
    harness.open();
    chooseBoth(&harness, 0);
    for (value = 1'234'566; value < 1'234'569; ++value) {
        harness.sampleTick();
    }
    const QStandardItemModel *const model = harness.exported();
    QCOMPARE(model->rowCount(), 3);
    QCOMPARE(model->columnCount(), 2);
    QCOMPARE(model->item(2, 0)->text(), QStringLiteral("1.23457e+06")); // six digits
    QCOMPARE(model->horizontalHeaderItem(1)->text(), QStringLiteral("second [raw]"));
    QCOMPARE(model->headerData(1, Qt::Horizontal, Qt::ToolTipRole).toString(),
             QStringLiteral("\nalias of S/m [Axis 0]\nsecond [raw]\n"));
    QCOMPARE(model->headerData(0, Qt::Horizontal, Qt::UserRole + 6).toString(),
             QStringLiteral("alias of S/m [Axis 0]"));

    // A second export replaces the first window.
    const QPointer<ExportCSV> first = harness.window->findChild<ExportCSV *>(QStringLiteral("ExportXY"));
    QVERIFY(first->isVisible());
    QTest::mouseClick(harness.find("btnExport"), Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(first.isNull());
    QCOMPARE(harness.window->findChildren<ExportCSV *>().size(), 1);
}

void CommandsTest::exportCountsByAnotherRuleThanItFills()
{
    PluginHarness harness(&m_root);
    qint32 value = 1;
    addModule(&harness, &value);
    harness.open();
    chooseBoth(&harness, 0);
    chooseBoth(&harness, 1);
    harness.curveBox(1)->click();
    harness.sampleTick();         // one point on 0 and 1
    harness.curveBox(1)->click(); // 1 is off now: filled, though not counted
    harness.curveBox(2)->click(); // counted, though it has no points
    const QStandardItemModel *const model = harness.exported();
    QCOMPARE(model->columnCount(), 4);
    QCOMPARE(model->item(0, 2)->text(), QStringLiteral("1"));
    harness.curveBox(2)->click();
    harness.curveBox(0)->click();
    QCOMPARE(harness.exported()->columnCount(), 4); // none was counted: the table grew
    QCOMPARE(harness.points(1), QVector<QPointF>({{1, 2}}));
}

void CommandsTest::exportWithoutPoints()
{
    PluginHarness harness(&m_root);
    harness.open();
    const QStandardItemModel *const model = harness.exported();
    QVERIFY(model != nullptr);
    QCOMPARE(model->rowCount(), 0);
    QCOMPARE(model->columnCount(), 2);
}

void CommandsTest::clear()
{
    PluginHarness harness(&m_root);
    qint32 value = 1000;
    addModule(&harness, &value);
    harness.open();
    QTest::mouseClick(harness.find("btnResetData"), Qt::LeftButton);
    const QImage empty = harness.plot()->grab().toImage();
    chooseBoth(&harness, 0);
    harness.sampleTick();
    value = 2000;
    harness.sampleTick();
    harness.refreshTick();
    QTest::mouseClick(harness.find("btnResetData"), Qt::LeftButton);
    QCOMPARE(harness.exported()->rowCount(), 0);
    const QImage cleared = harness.plot()->grab().toImage();
    harness.refreshTick();
    QCOMPARE(harness.plot()->grab().toImage(), cleared); // an empty curve is not handed over
    // Back to -10..10: but for the legend, which names the sources now, the plot looks as it did without points.
    const QRect area(0, 60, empty.width(), empty.height() - 60 - 22);
    QCOMPARE(cleared.copy(area), empty.copy(area));
    harness.sampleTick();
    QCOMPARE(harness.points(), QVector<QPointF>({{2000, 4000}}));
}

GUARDED_TEST_MAIN(CommandsTest)
#include "CommandsTest.moc"
