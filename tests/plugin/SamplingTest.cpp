#include "GuardedTest.h"
#include "ScriptedCurve.h"
#include "XYPlotter.h"

#include <QGraphicsPolygonItem>
#include <QGraphicsView>
#include <QLabel>
#include <QSlider>

/// What a sampling tick asks and collects, and what a refresh tick makes of it.
class SamplingTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void exchanges();
    void whatIsCollected();
    void channelThatLetsThingsThrough();
    void rate();
    void range();
    void fullCurveIsCut();
    void trail();

private:
    XYPlotter m_root;
};

void SamplingTest::exchanges()
{
    ScriptedCurve curve(&m_root);
    ScriptedModule *const other = curve.addOther();
    QStringList journal;
    for (ScriptedModule *const module : {curve.module, other}) {
        module->channel.journal = &journal;
        module->channel.setCircularMode(true);
    }
    curve.chooseBoth();
    curve.sampleTick();
    QCOMPARE(journal, QStringList({"S/m x 2"})); // one module, one exchange, X first
    QCOMPARE(int(curve.module->channel.exchanges.constLast().at(0).type()), 1);

    curve.module->channel.setCircularMode(true);
    QVERIFY(curve.choose(0, 'Y', QStringLiteral("S/other"), QString(), QStringLiteral("speed")));
    curve.sampleTick();
    QCOMPARE(journal.mid(1), QStringList({"S/m x 1", "S/other x 1"}));
    QVERIFY(!curve.module->channel.circularMode());
    QVERIFY(other->channel.circularMode()); // only X's channel leaves that mode
}

void SamplingTest::whatIsCollected()
{
    ScriptedCurve curve(&m_root);
    curve.sample(1, 2);
    curve.sample(1, 2); // a repeat is no point
    curve.sample(-3, 2);
    curve.plugin->hide();
    curve.sample(4, 4); // nobody sees it
    curve.refreshTick();
    curve.plugin->show();
    curve.curveBox(0)->click();
    curve.sample(5, 5); // not recorded
    curve.curveBox(0)->click();
    curve.sample(1, 2);
    QCOMPARE(curve.points(), QVector<QPointF>({{1, 2}, {-3, 2}, {1, 2}}));
}

void SamplingTest::channelThatLetsThingsThrough()
{
    ScriptedCurve curve(&m_root);
    curve.addOther();
    QVERIFY(curve.choose(0, 'X', QStringLiteral("S/m"), QString(), QStringLiteral("pos")));
    QVERIFY(curve.choose(0, 'Y', QStringLiteral("S/other"), QString(), QStringLiteral("speed")));
    // While X is being read, Y's module is taken out: it and its channel are gone when X's answer is there.
    curve.module->channel.onExchange = [&curve] { curve.handler.removeModulePlugin(QStringLiteral("S/other")); };
    curve.sampleTick();
    QCOMPARE(curve.exported()->rowCount(), 0);
    curve.sampleTick();
    QCOMPARE(curve.module->channel.exchanges.size(), 1);

    QTRY_COMPARE(curve.moduleBox(0, 'X')->currentIndex(), -1);
    curve.chooseBoth();
    curve.module->channel.onExchange = [&curve] { delete curve.plugin; };
    curve.sampleTick();
    QVERIFY(curve.plugin.isNull());
}

void SamplingTest::rate()
{
    ScriptedCurve curve(&m_root);
    auto *const slider = curve.find<QSlider>("horizontalSliderRate");
    const auto *const label = curve.find<QLabel>("labelRate");
    curve.sampleTick();
    QVERIFY(label->text().endsWith(QLatin1Char('s')));
    const int refreshTimers = curve.activeTimers() - 1;
    slider->setValue(100);
    QCOMPARE(slider->toolTip(), QStringLiteral("Intervall 0 ms"));
    QCOMPARE(curve.activeTimers(), refreshTimers + 1);
    slider->setValue(0);
    QCOMPARE(curve.activeTimers(), refreshTimers);
    QCOMPARE(label->text(), QStringLiteral("no sample"));
    QCOMPARE(slider->statusTip(), QStringLiteral("no sample"));
    expectMessage(QtWarningMsg, QRegularExpression(QStringLiteral("killTimer"))); // the dead id is kept
    slider->setValue(50);
    QCOMPARE(slider->statusTip(), QStringLiteral("Intervall 50 ms"));
}

void SamplingTest::range()
{
    ScriptedCurve curve(&m_root);
    curve.sample(1000, -500);
    curve.refreshTick();
    // 1000 +/- 0.5 in steps of 0.2: 999.4 to 1000.6. Only the middle is a whole number: no label left of it.
    QVERIFY(curve.isCurveAt({1000, -500}, QRectF(999.4, -500.6, 1.2, 1.2)));
    const QImage image = curve.picture();
    const QRect labels(2, image.height() - 35, 200, 12);
    QImage blank(labels.size(), image.format());
    blank.fill(image.pixelColor(labels.topLeft()));
    QCOMPARE(image.copy(labels), blank);

    curve.chooseBoth();
    curve.sample(0, 0);
    curve.refreshTick();
    curve.sample(100, 40);
    const QImage before = curve.picture();
    QCOMPARE(curve.picture(), before); // points reach the plot at refresh ticks only
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

void SamplingTest::fullCurveIsCut()
{
    ScriptedCurve curve(&m_root);
    for (int number = 0; number < 10000; ++number) {
        curve.sample(number, number % 3);
    }
    curve.refreshTick();
    QCOMPARE(curve.points().size(), 10000);
    curve.sample(10000, 7);
    curve.refreshTick();
    const QVector<QPointF> points = curve.points();
    QCOMPARE(points.size(), 5001);
    QCOMPARE(points.constFirst(), QPointF(5000, 5000 % 3));
    QVERIFY(curve.isCurveAt({7500, 1}, QRectF(5000, 0, 5000, 7))); // what is left sets the range
}

void SamplingTest::trail()
{
    ScriptedCurve curve(&m_root);
    const QGraphicsScene *const scene = curve.find<QGraphicsView>("graphicsView")->scene();
    const auto *const item = qgraphicsitem_cast<QGraphicsPolygonItem *>(scene->items().constFirst());
    curve.sample(1, 1);
    curve.sample(2, 2);
    QVERIFY(item->polygon().isEmpty());
    curve.refreshTick();
    QCOMPARE(item->polygon(), QPolygonF(QVector<QPointF>({{2, 2}}))); // the latest between two refreshes
    for (int number = 0; number < 499; ++number) {
        curve.sample(number, 0);
        curve.refreshTick();
    }
    QCOMPARE(item->polygon().size(), 500);
    curve.sample(498, 0); // a repeated point goes in, too
    curve.refreshTick();
    QCOMPARE(item->polygon().size(), 251);
    curve.radioButton(1)->click();
    QVERIFY(item->polygon().isEmpty());
    QCOMPARE(item->pen().color(), QColor(255, 215, 0));
    curve.sample(7, 7);
    curve.refreshTick();
    QVERIFY(item->polygon().isEmpty()); // curve 0 no longer feeds it
}

GUARDED_TEST_MAIN(SamplingTest)
#include "SamplingTest.moc"
