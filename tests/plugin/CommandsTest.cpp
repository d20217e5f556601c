#include "GuardedTest.h"
#include "ScriptedCurve.h"
#include "XYPlotter.h"

#include "host/AppSettings.h"
#include "host/ExportCSV.h"

#include <QStackedWidget>

/// The buttons of the window.
class CommandsTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void screenshot();
    void exportTable();
    void exportCountsByAnotherRuleThanItFills();
    void clear();

private:
    XYPlotter m_root;
};

void CommandsTest::screenshot()
{
    AppSettings().setValue(QStringLiteral("Pictures/Folder"), temporaryPath(QStringLiteral("pictures")));
    ScriptedCurve curve(&m_root);
    QTest::mouseClick(curve.find("btnCamera"), Qt::LeftButton);
    const QString told = messages(QtInfoMsg).value(0);
    QVERIFY(QFileInfo(told).fileName().startsWith(QStringLiteral("xyp")));
    QCOMPARE(QImage(told).size(), curve.plot()->size());
}

void CommandsTest::exportTable()
{
    ScriptedCurve curve(&m_root);
    QCOMPARE(curve.exported()->rowCount(), 0); // still a table, with a pair of columns for the recorded curve
    QCOMPARE(curve.exported()->columnCount(), 2);
    curve.sample(1'234'566, 1);
    curve.sample(1'234'567, 2);
    const QStandardItemModel *const model = curve.exported();
    QCOMPARE(model->rowCount(), 2);
    QCOMPARE(model->item(1, 0)->text(), QStringLiteral("1.23457e+06")); // six digits
    QCOMPARE(model->horizontalHeaderItem(1)->text(), QStringLiteral("speed [raw]"));
    QCOMPARE(model->headerData(1, Qt::Horizontal, Qt::ToolTipRole).toString(),
             QStringLiteral("\nalias of S/m [Axis 0]\nspeed [raw]\n"));
    QCOMPARE(model->headerData(0, Qt::Horizontal, Qt::UserRole + 6).toString(),
             QStringLiteral("alias of S/m [Axis 0]"));

    const QPointer<ExportCSV> first = curve.window->findChild<ExportCSV *>(QStringLiteral("ExportXY"));
    QVERIFY(first->isVisible());
    QTest::mouseClick(curve.find("btnExport"), Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(first.isNull()); // replaced by the new one
    QCOMPARE(curve.window->findChildren<ExportCSV *>().size(), 1);
}

void CommandsTest::exportCountsByAnotherRuleThanItFills()
{
    ScriptedCurve curve(&m_root);
    curve.chooseBoth(1);
    curve.curveBox(1)->click();
    curve.sample(1, 2);         // one point on 0 and 1
    curve.curveBox(1)->click(); // 1 is off now: filled, though not counted
    curve.curveBox(2)->click(); // counted, though it has no points
    QCOMPARE(curve.exported()->columnCount(), 4);
    QCOMPARE(curve.points(1), QVector<QPointF>({{1, 2}}));
    curve.curveBox(2)->click();
    curve.curveBox(0)->click();
    QCOMPARE(curve.exported()->columnCount(), 4); // none was counted: the table grew
}

void CommandsTest::clear()
{
    ScriptedCurve curve(&m_root);
    QTest::mouseClick(curve.find("btnResetData"), Qt::LeftButton);
    const QImage empty = curve.picture();
    curve.sample(1000, 2000);
    curve.sample(2000, 4000);
    curve.refreshTick();
    QVERIFY(curve.picture() != empty);
    QTest::mouseClick(curve.find("btnResetData"), Qt::LeftButton);
    QCOMPARE(curve.exported()->rowCount(), 0);
    curve.refreshTick();
    QCOMPARE(curve.picture(), empty); // -10 to 10 again; the old points lie far outside
    curve.sample(2000, 4000);
    QCOMPARE(curve.points(), QVector<QPointF>({{2000, 4000}}));
}

GUARDED_TEST_MAIN(CommandsTest)
#include "CommandsTest.moc"
