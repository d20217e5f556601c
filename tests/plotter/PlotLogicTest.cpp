#include "GridTicks.h"
#include "GuardedTest.h"
#include "PlotGeometry.h"
#include "PlotterFixture.h"

#include <limits>

class PlotLogicTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void settings();
    void mapping_data();
    void mapping();
    void ticks_data();
    void ticks();
    void ticksOfAnyCount();
};

void PlotLogicTest::settings()
{
    PlotSettings settings = ranges(0.3, 9.6, -187.0, 31.0);
    settings.numYTicks = 8;
    settings.scroll(0, 2);
    QCOMPARE(settings.minX, 0.3);
    QCOMPARE(settings.minY, -187.0 + 2 * 218.0 / 8);
    QCOMPARE(settings.maxY, 31.0 + 2 * 218.0 / 8);
    settings.adjust();
    QCOMPARE(settings.maxX, 10.0);
    QVERIFY(settings.minY < -132.0 && settings.minY >= -150.0);
}

void PlotLogicTest::mapping_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("square");
    QTest::addColumn<double>("maxX");
    QTest::addColumn<QPointF>("pixels");
    QTest::newRow("unrounded") << QSize(600, 400) << false << 13.0 << QPointF(99.9, 329.1);
    QTest::newRow("square") << QSize(700, 300) << true << 13.0 << QPointF(69.9, 239.1);
    QTest::newRow("empty range") << QSize(600, 400) << false << 3.0 << QPointF(549, 329.1);
    QTest::newRow("no area") << QSize(101, 101) << false << 13.0 << QPointF(50, 60);
}

void PlotLogicTest::mapping()
{
    QFETCH(QSize, size);
    QFETCH(bool, square);
    QFETCH(double, maxX);
    QTEST(PlotGeometry(size, square).mapping(ranges(3.0, maxX, 0.0, 10.0)).map(QPointF(4, 1)), "pixels");
}

void PlotLogicTest::ticks_data()
{
    QTest::addColumn<double>("minimum");
    QTest::addColumn<double>("maximum");
    QTest::addColumn<QString>("labels");
    QTest::newRow("whole") << 0.0 << 10.0 << "0 2 4 6 8 10";
    QTest::newRow("fractions") << 0.0 << 1.0 << "0     1";
    QTest::newRow("halves") << -2.5 << 0.0 << " -2  -1  0";
    QTest::newRow("no number") << qQNaN() << 1.0 << "     ";
    QTest::newRow("endless") << -qInf() << qInf() << "     ";
}

void PlotLogicTest::ticks()
{
    QFETCH(double, minimum);
    QFETCH(double, maximum);
    const QVector<int> positions = {359, 299, 239, 179, 119, 60}; // cut, not rounded
    const QVector<GridTick> ticks = gridTicks(minimum, maximum, 5, 359.0, -299.0);
    QStringList labels;
    for (const GridTick &tick : ticks) {
        QCOMPARE(tick.position, positions.value(labels.size()));
        labels.append(tick.label);
    }
    QTEST(labels.join(QLatin1Char(' ')), "labels");
}

void PlotLogicTest::ticksOfAnyCount()
{
    QCOMPARE(gridTicks(0.0, 10.0, 0, 50.0, 499.0).size(), 0);
    QCOMPARE(gridTicks(0.0, 10.0, 499, 50.0, 499.0).size(), 500);
    QVERIFY(gridTicks(0.0, 10.0, std::numeric_limits<unsigned int>::max(), 50.0, 499.0).size() <= 500);
    QCOMPARE(truncated(-2.9), -2);
    QCOMPARE(truncated(qQNaN()), 0);
    QVERIFY(truncated(qInf()) > 100000 && truncated(-1.0e300) < -100000);
}

GUARDED_TEST_MAIN(PlotLogicTest)
#include "PlotLogicTest.moc"
