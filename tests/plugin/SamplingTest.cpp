#include "GuardedTest.h"
#include "PluginHarness.h"
#include "ScriptedModule.h"
#include "XYPlotter.h"

#include <QGraphicsPolygonItem>
#include <QGraphicsView>
#include <QLabel>
#include <QSlider>

namespace
{

/// A plugin with one curve whose X and Y are what the test says.
class OneCurve : public PluginHarness
{
public:
    explicit OneCurve(ContainerInterface *root)
        : PluginHarness(root), module(new ScriptedModule(QStringLiteral("S/m"), 1))
    {
        module->addParameter("axis0", "par::x", 1, "X value");
        module->addParameter("axis0", "par::y", 2, "Y value");
        module->channel.answer = [this](const Command &request) { return request.type() == 1 ? x : y; };
        handler.addModulePlugin(module);
        open();
        chooseBoth(0);
    }

    void chooseBoth(int curve)
    {
        QVERIFY(choose(curve, 'X', QStringLiteral("S/m"), QString(), QStringLiteral("X value")));
        QVERIFY(choose(curve, 'Y', QStringLiteral("S/m"), QString(), QStringLiteral("Y value")));
    }

    void sample(qint32 newX, qint32 newY)
    {
        x = newX;
        y = newY;
        sampleTick();
    }

    /// The shown colour where the pixel of a data point would be, for the range given.
    QColor colorAt(QPointF point, QRectF range) const
    {
        const QImage image = plot()->grab().toImage();
        const double width = plot()->width() - 101;
        const double height = plot()->height() - 101;
        const double pixelX = 50 + (point.x() - range.left()) * width / range.width();
        const double pixelY = plot()->height() - 41 - (point.y() - range.top()) * height / range.height();
        return image.pixelColor(qRound(pixelX), qRound(pixelY));
    }

    ScriptedModule *module;
    qint32 x = 0;
    qint32 y = 0;
};

bool isReddish(const QColor &color)
{
    return color.red() > color.green() + 60 && color.red() > color.blue() + 40;
}

} // namespace

/// What a sampling tick asks and collects, and what a refresh tick makes of it.
class SamplingTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void pointsAreCollected();
    void exchangeOrder();
    void hiddenWindowAndUncheckedBox();
    void noticeInTheMiddleOfAnExchange();
    void destructionInTheMiddleOfAnExchange();
    void rate();
    void firstPointSetsTheRange();
    void refreshWidensTheRange();
    void fullCurveIsCut();
    void trail();

private:
    XYPlotter m_root;
};

void SamplingTest::pointsAreCollected()
{
    OneCurve curve(&m_root);
    curve.sample(1, 2);
    curve.sample(1, 2);
    curve.sample(-3, 2);
    curve.sample(1, 2);
    QCOMPARE(curve.points(), QVector<QPointF>({{1, 2}, {-3, 2}, {1, 2}})); // repeats are no points
    QVERIFY(!curve.find<QLabel>("labelRate")->text().isEmpty());
}

void SamplingTest::exchangeOrder()
{
    OneCurve curve(&m_root);
    QStringList journal;
    auto *const other = new ScriptedModule(QStringLiteral("S/other"), 1, 2);
    other->addParameter("axis0", "par::y", 2, "Y value");
    curve.handler.addModulePlugin(other);
    for (ScriptedModule *const module : {curve.module, other}) {
        module->channel.journal = &journal;
        module->channel.setCircularMode(true);
    }
    QTRY_COMPARE(curve.moduleBox(0, 'X')->count(), 2);
    curve.chooseBoth(0);
    curve.sampleTick();
    QCOMPARE(journal, QStringList({"S/m x 2"})); // one module, one exchange
    QCOMPARE(curve.module->channel.exchanges.constLast().at(0).type(), static_cast<unsigned char>(1));
    QVERIFY(!curve.module->channel.circularMode());

    journal.clear();
    curve.module->channel.setCircularMode(true);
    QVERIFY(curve.choose(0, 'Y', QStringLiteral("S/other"), QString(), QStringLiteral("Y value")));
    curve.sampleTick();
    QCOMPARE(journal, QStringList({"S/m x 1", "S/other x 1"}));
    QVERIFY(!curve.module->channel.circularMode());
    QVERIFY(other->channel.circularMode()); // only X's channel leaves that mode
}

void SamplingTest::hiddenWindowAndUncheckedBox()
{
    OneCurve curve(&m_root);
    curve.sample(1, 1);
    curve.plugin->hide();
    curve.sample(2, 2);
    curve.refreshTick();
    curve.plugin->show();
    curve.curveBox(0)->click();
    curve.sample(3, 3);
    curve.curveBox(0)->click();
    QCOMPARE(curve.points(), QVector<QPointF>({{1, 1}}));
    curve.sample(4, 4);
    QCOMPARE(curve.points().size(), 2);
}

void SamplingTest::noticeInTheMiddleOfAnExchange()
{
    OneCurve curve(&m_root);
    auto *const other = new ScriptedModule(QStringLiteral("S/other"), 1, 2);
    other->addParameter("axis0", "par::y", 2, "Y value");
    curve.handler.addModulePlugin(other);
    QTRY_COMPARE(curve.moduleBox(0, 'X')->count(), 2);
    QVERIFY(curve.choose(0, 'X', QStringLiteral("S/m"), QString(), QStringLiteral("X value")));
    QVERIFY(curve.choose(0, 'Y', QStringLiteral("S/other"), QString(), QStringLiteral("Y value")));
    // While X is being read, Y's module is taken out: it and its channel are gone when X's answer is there.
    curve.module->channel.onExchange = [&curve] { curve.handler.removeModulePlugin(QStringLiteral("S/other")); };
    curve.sampleTick();
    curve.module->channel.onExchange = nullptr;
    QCOMPARE(curve.exported()->rowCount(), 0);
    curve.sampleTick();
    QCOMPARE(curve.module->channel.exchanges.size(), 1);
}

void SamplingTest::destructionInTheMiddleOfAnExchange()
{
    OneCurve curve(&m_root);
    curve.module->channel.onExchange = [&curve] { delete curve.plugin; };
    curve.sampleTick();
    QVERIFY(curve.plugin.isNull());
}

void SamplingTest::rate()
{
    OneCurve curve(&m_root);
    auto *const slider = curve.find<QSlider>("horizontalSliderRate");
    const int refreshTimers = curve.activeTimers() - 1;
    slider->setValue(100);
    QCOMPARE(slider->toolTip(), QStringLiteral("Intervall 0 ms"));
    QCOMPARE(curve.activeTimers(), refreshTimers + 1);
    slider->setValue(0);
    QCOMPARE(curve.activeTimers(), refreshTimers);
    QCOMPARE(curve.find<QLabel>("labelRate")->text(), QStringLiteral("no sample"));
    QCOMPARE(slider->toolTip(), QStringLiteral("no sample"));
    QCOMPARE(slider->statusTip(), QStringLiteral("no sample"));
    expectMessage(QtWarningMsg, QRegularExpression(QStringLiteral("killTimer"))); // the dead id is kept
    slider->setValue(50);
    QCOMPARE(slider->statusTip(), QStringLiteral("Intervall 50 ms"));
    QCOMPARE(curve.activeTimers(), refreshTimers + 1);
}

void SamplingTest::firstPointSetsTheRange()
{
    OneCurve curve(&m_root);
    curve.sample(1000, -500);
    curve.refreshTick();
    // 1000 +/- 0.5 in steps of 0.2 (five intervals were shown before): 999.4 to 1000.6.
    const QRectF range(999.4, -500.6, 1.2, 1.2);
    QVERIFY(isReddish(curve.colorAt({1000, -500}, range)));
    QVERIFY(!isReddish(curve.colorAt({1000.2, -500}, range)));
    const QImage image = curve.plot()->grab().toImage();
    // Of all ticks only the one in the middle is a whole number: no label left of it.
    const QRect labels(2, image.height() - 35, 200, 12);
    QImage blank(labels.size(), image.format());
    blank.fill(image.pixelColor(labels.topLeft()));
    QCOMPARE(image.copy(labels), blank);
}

void SamplingTest::refreshWidensTheRange()
{
    OneCurve curve(&m_root);
    curve.sample(0, 0);
    curve.refreshTick();
    curve.sample(100, 40);
    const QImage before = curve.plot()->grab().toImage();
    QCOMPARE(curve.plot()->grab().toImage(), before); // points reach the plot at refresh ticks only
    curve.refreshTick();
    QVERIFY(curve.plot()->grab().toImage() != before);
    const QRectF range(-20, -10, 120, 50); // steps of 20 and of 10
    QVERIFY(isReddish(curve.colorAt({50, 20}, range)));
    QVERIFY(isReddish(curve.colorAt({75, 30}, range)));

    curve.sample(-100, -40);
    curve.refreshTick();
    QVERIFY(isReddish(curve.colorAt({-75, -30}, QRectF(-100, -40, 200, 80)))); // steps of 50 and of 20
    curve.sample(75, 30);
    curve.refreshTick();

    // Only the latest sample is looked at: a peak between two refreshes stays outside.
    curve.sample(5000, 20);
    curve.sample(50, 20);
    curve.refreshTick();
    QVERIFY(isReddish(curve.colorAt({-75, -30}, QRectF(-100, -40, 200, 80))));
}

void SamplingTest::fullCurveIsCut()
{
    OneCurve curve(&m_root);
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
    QCOMPARE(points.constLast(), QPointF(10000, 7));
    // The range is what is left: 5000 to 10000 and 0 to 7.
    QVERIFY(isReddish(curve.colorAt({7500, 1}, QRectF(5000, 0, 5000, 7))) ||
            isReddish(curve.colorAt({7500, 1}, QRectF(5000, 0, 5000, 8))));
}

void SamplingTest::trail()
{
    OneCurve curve(&m_root);
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
