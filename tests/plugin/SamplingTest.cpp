#include "GuardedTest.h"
#include "ScriptedCurve.h"
#include "XYPlotter.h"

#include "host/AppSettings.h"
#include "host/ExportCSV.h"

#include <QGraphicsPolygonItem>
#include <QGraphicsView>
#include <QLabel>
#include <QSlider>

/// What a sampling tick reads and collects, what a refresh tick shows, and the buttons that use the points.
class SamplingTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void exchanges()
    {
        ScriptedCurve curve(&m_root);
        ScriptedModule *const other = curve.addOther();
        QStringList journal;
        for (ScriptedModule *const module : {curve.module, other}) {
            module->channel.onExchange = [&journal, module] {
                journal.append(
                    QStringLiteral("%1 x %2").arg(module->key()).arg(module->channel.exchanges.constLast().size()));
            };
            module->channel.setCircularMode(true);
        }
        curve.chooseBoth();
        curve.sampleTick();
        QCOMPARE(journal, QStringList({"S/m x 2"})); // one module, one exchange, X first
        QCOMPARE(int(curve.module->channel.exchanges.constLast().at(0).type()), 1);

        curve.module->channel.setCircularMode(true);
        QVERIFY(curve.choose(0, 'Y', "S/other", "", "speed"));
        curve.sampleTick();
        QCOMPARE(journal.mid(1), QStringList({"S/m x 1", "S/other x 1"}));
        QVERIFY(!curve.module->channel.circularMode());
        QVERIFY(other->channel.circularMode()); // only X's channel leaves that mode
    }

    void whatIsCollected()
    {
        ScriptedCurve curve(&m_root);
        curve.sample(1, 2);
        curve.sample(1, 2); // a repeat is no point
        curve.sample(-3, 2);
        curve.plugin->hide();
        curve.sample(4, 4); // not read while hidden
        curve.refreshTick();
        curve.plugin->show();
        curve.curveBox(0)->click();
        curve.sample(5, 5); // not recorded
        curve.curveBox(0)->click();
        curve.sample(1, 2);
        QCOMPARE(curve.points(), QVector<QPointF>({{1, 2}, {-3, 2}, {1, 2}}));
    }

    void whatMayGoDuringAnExchange_data()
    {
        QTest::addColumn<QStringList>("gone");
        QTest::addColumn<int>("module"); // in whose exchange it happens
        for (const int module : {0, 1}) {
            for (const char *const gone : {"plugin", "plugin, S/m", "plugin, S/other", "S/other", "S/m, S/other",
                                           "notices, S/m", "notices, S/other"}) {
                QTest::addRow("%s, in the exchange with module %d", gone, module)
                    << QString(QLatin1String(gone)).split(QStringLiteral(", ")) << module;
            }
        }
    }

    void whatMayGoDuringAnExchange()
    {
        QFETCH(QStringList, gone);
        QFETCH(int, module);
        ScriptedCurve curve(&m_root);
        const QPointer<ScriptedModule> other = curve.addOther();
        QVERIFY(curve.choose(0, 'X', "S/m", "", "pos"));
        QVERIFY(curve.choose(0, 'Y', "S/other", "", "speed"));
        (module == 0 ? curve.module : other.data())->channel.onExchange = [&curve, gone] {
            for (const QString &what : gone) {
                if (what == QStringLiteral("plugin")) {
                    delete curve.plugin;
                } else if (what == QStringLiteral("notices")) {
                    curve.handler.removeContainer(curve.plugin);
                } else {
                    curve.handler.removeModulePlugin(what);
                }
            }
        };
        curve.sampleTick();
        if (!curve.plugin.isNull()) {
            curve.sampleTick(); // reads from no destroyed module
            QCOMPARE(curve.exported()->rowCount(), 0);
        } else if (!other.isNull() && module == 0) {
            QVERIFY(other->channel.exchanges.isEmpty()); // a destroyed plugin sends no request
        }
    }

    void rate()
    {
        ScriptedCurve curve(&m_root);
        auto *const slider = curve.find<QSlider>("horizontalSliderRate");
        const int timers = curve.activeTimers();
        const auto *const label = curve.find<QLabel>("labelRate");
        QTest::qSleep(20);
        QElapsedTimer sinceFirst;
        sinceFirst.start();
        curve.sampleTick();
        curve.sampleTick();
        const double factor = label->text().endsWith(QStringLiteral("ms")) ? 1.0 : 0.001;
        const double shownMs = label->text().trimmed().section(QLatin1Char(' '), 0, 0).toInt() * factor;
        QVERIFY(shownMs <= static_cast<double>(sinceFirst.elapsed()) + 1.0); // since the last sample, not the first
        slider->setValue(0);
        QCOMPARE(curve.activeTimers(), timers - 1);
        QCOMPARE(slider->statusTip(), QStringLiteral("no sample"));
        expectMessage(QtWarningMsg, QRegularExpression("killTimer")); // the dead id is kept
        slider->setValue(50);
        QCOMPARE(curve.activeTimers(), timers);
    }

    void range()
    {
        ScriptedCurve curve(&m_root);
        curve.sample(1000, -500);
        curve.refreshTick();
        // 1000 +/- 0.5 in steps of 0.2: 999.4 to 1000.6
        QVERIFY(curve.isCurveAt({1000, -500}, QRectF(999.4, -500.6, 1.2, 1.2)));
        curve.sample(1001, -499);
        curve.refreshTick();
        QVERIFY(curve.isCurveAt({1000.5, -499.5}, QRectF(999, -501, 2, 2))); // from there outwards in steps of 0.5

        curve.chooseBoth();
        curve.sample(0, 0);
        curve.refreshTick();
        const QImage before = curve.plot()->grab().toImage();
        curve.sample(100, 40);
        QCOMPARE(curve.plot()->grab().toImage(), before); // points reach the plot at refresh ticks only
        curve.refreshTick();
        QVERIFY(curve.isCurveAt({75, 30}, QRectF(-20, -10, 120, 50))); // steps of 20 and of 10
        curve.sample(-100, -40);
        curve.refreshTick();
        const QRectF wider(-100, -40, 200, 80); // steps of 50 and of 20
        QVERIFY(curve.isCurveAt({-75, -30}, wider));
        curve.sample(5000, 20); // only the latest sample is looked at: this peak stays outside
        curve.sample(75, 30);
        curve.refreshTick();
        QVERIFY(curve.isCurveAt({-75, -30}, wider));
    }

    void fullCurveIsCut()
    {
        ScriptedCurve curve(&m_root);
        QVERIFY(curve.choose(1, 'X', "S/m", "", "speed")); // the same points with X and Y swapped
        QVERIFY(curve.choose(1, 'Y', "S/m", "", "pos"));
        curve.curveBox(1)->click();
        for (int number = 0; number < 10000; ++number) {
            curve.sample(number, number % 3 * 1000);
        }
        curve.refreshTick();
        QCOMPARE(curve.points().size(), 10000);
        curve.sample(10000, 7);
        curve.refreshTick();
        const QVector<QPointF> points = curve.points();
        QCOMPARE(points.size(), 5001);
        QCOMPARE(points.constFirst(), QPointF(5000, 5000 % 3 * 1000));
        QVERIFY(curve.isCurveAt({7500, 1000}, QRectF(0, 0, 10000, 10000))); // what is left of both sets the range
    }

    void exportCountsByAnotherRuleThanItFills()
    {
        ScriptedCurve curve(&m_root);
        QCOMPARE(curve.exported()->columnCount(), 2); // for the curve that is recorded, though without points
        curve.chooseBoth(1);
        curve.curveBox(1)->click();
        curve.sample(1, 2);         // one point on 0 and 1
        curve.curveBox(1)->click(); // 1 is off now: filled, though not counted
        curve.curveBox(2)->click(); // counted, though it has no points
        QCOMPARE(curve.exported()->columnCount(), 4);
        QCOMPARE(curve.points(1), QVector<QPointF>({{1, 2}}));
        QCOMPARE(curve.exported()->horizontalHeaderItem(1)->text(), QStringLiteral("speed [raw]"));
        curve.curveBox(2)->click();
        curve.curveBox(0)->click();
        QCOMPARE(curve.exported()->columnCount(), 4); // none was counted: the table grew
    }

    void exportReplacesItsWindow()
    {
        ScriptedCurve curve(&m_root);
        curve.addOther();
        QVERIFY(curve.choose(0, 'X', "S/m", "", "pos"));
        QVERIFY(curve.choose(0, 'Y', "S/other", "", "speed"));
        curve.sample(1234567, 1);
        QCOMPARE(curve.exported()->item(0, 0)->text(), QStringLiteral("1.23457e+06")); // six digits
        QCOMPARE(curve.exported()->horizontalHeaderItem(0)->toolTip(),
                 QStringLiteral("\nalias of S/m [Axis 0]\npos [raw]\n"));
        QCOMPARE(curve.exported()->horizontalHeaderItem(1)->toolTip(),
                 QStringLiteral("\nalias of S/other [Axis 0]\nspeed [raw]\n"));
        const QPointer<ExportCSV> first = curve.window->findChild<ExportCSV *>("ExportXY");
        QVERIFY(first->isVisible());
        QTest::mouseClick(curve.find("btnExport"), Qt::LeftButton);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(first.isNull());
    }

    void screenshot()
    {
        ScriptedCurve curve(&m_root);
        AppSettings().setValue("Pictures/Folder", temporaryPath("pictures"));
        const QImage plot = curve.plot()->grab().toImage();
        QTest::mouseClick(curve.find("btnCamera"), Qt::LeftButton);
        const QFileInfoList pictures = QDir(temporaryPath("pictures")).entryInfoList({"xyp_*.png"});
        QCOMPARE(pictures.size(), 1);
        QCOMPARE(messages(QtInfoMsg), QStringList({pictures.constFirst().filePath()}));
        QCOMPARE(QImage(pictures.constFirst().filePath()).convertToFormat(plot.format()), plot);
    }

    void trail()
    {
        ScriptedCurve curve(&m_root);
        const QGraphicsScene *const scene = curve.find<QGraphicsView>("graphicsView")->scene();
        const auto *const item = qgraphicsitem_cast<QGraphicsPolygonItem *>(scene->items().constFirst());
        curve.sample(1, 1);
        curve.sample(2, 2);
        curve.refreshTick();
        QCOMPARE(item->polygon(), QPolygonF(QVector<QPointF>({{2, 2}}))); // the latest between two refreshes
        for (int number = 0; number < 500; ++number) {
            curve.sample(number, 0);
            curve.refreshTick();
        }
        QCOMPARE(item->polygon().size(), 251);
        curve.radioButton(1)->click();
        curve.sample(7, 7);
        curve.refreshTick();
        QVERIFY(item->polygon().isEmpty()); // curve 0 no longer feeds it
    }

    void clear()
    {
        ScriptedCurve curve(&m_root);
        QTest::mouseClick(curve.find("btnResetData"), Qt::LeftButton);
        const QImage empty = curve.plot()->grab().toImage();
        curve.sample(1000, 2000);
        curve.sample(2000, 4000);
        curve.refreshTick();
        QVERIFY(curve.plot()->grab().toImage() != empty);
        QTest::mouseClick(curve.find("btnResetData"), Qt::LeftButton);
        QCOMPARE(curve.exported()->rowCount(), 0);
        curve.refreshTick();
        QCOMPARE(curve.plot()->grab().toImage(), empty); // -10 to 10 again; the old points lie far outside
        curve.sample(2000, 4000);
        QCOMPARE(curve.points(), QVector<QPointF>({{2000, 4000}}));
    }

private:
    XYPlotter m_root;
};

GUARDED_TEST(SamplingTest)
#include "SamplingTest.moc"
