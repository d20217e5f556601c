#include "GuardedTest.h"
#include "PlotterFixture.h"

#include "host/CurveColors.h"
#include "host/DynamicProperty.h"

#include <cmath>
#include <limits>

namespace
{

QColor blended(const QColor &under, const QColor &over)
{
    const auto mixed = [&](int a, int b) { return qRound(a + (b - a) * over.alphaF()); };
    return {mixed(under.red(), over.red()), mixed(under.green(), over.green()), mixed(under.blue(), over.blue())};
}

bool isNear(const QColor &a, const QColor &b, int tolerance = 3)
{
    return std::abs(a.red() - b.red()) <= tolerance && std::abs(a.green() - b.green()) <= tolerance &&
           std::abs(a.blue() - b.blue()) <= tolerance;
}

/// The bounds of all pixels of \a area that \a isWanted.
template<typename Predicate> QRect bounds(const QImage &image, const QRect &area, Predicate isWanted)
{
    QRect found;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            found |= isWanted(image.pixelColor(x, y)) ? QRect(x, y, 1, 1) : QRect();
        }
    }
    return found;
}

QRect ink(const QImage &image, const QRect &area)
{
    return bounds(image, area, [](const QColor &color) { return color != QColor(10, 20, 30); });
}

/// Where text in the opaque colour of curve \a id stands in \a area.
QRect textOfCurve(const QImage &image, const QRect &area, int id)
{
    const QColor opaque = QColor(colorForIds[id].rgb());
    return bounds(image, area, [&](const QColor &color) { return isNear(color, opaque, 30); });
}

const QRect legendOfY(0, 38, 600, 16);
const QRect legendOfX(0, 380, 600, 20);

} // namespace

class PlotterDrawingTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void curveBoxes();
    void colors_data();
    void colors();
    void markers();
    void orderAndClip();
    void visibility_data();
    void visibility();
    void legendFollowsNames();
    void grid();
    void wideLabelsAreNotCut();
    void smallWidgets();
    void extremes();
};

void PlotterDrawingTest::curveBoxes()
{
    const Plotter plotter(4);
    QAbstractButton *const third = plotter.curveButtons.button(2);
    QCOMPARE(third->property("ColorName").toString(), QStringLiteral("#1496ff"));
    QCOMPARE(third->property(DynamicProperty::CaptureX).toString(), QStringLiteral("X3"));
    QCOMPARE(third->property(DynamicProperty::CaptureY).toString(), QStringLiteral("Y3"));
    third->click();
    QVERIFY(third->isChecked() && plotter.curveButtons.button(0)->isChecked());
    QVERIFY(!plotter.curveButtons.button(1)->isChecked());
}

void PlotterDrawingTest::colors_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("lines");
    for (const int id : {0, 3, 5, 6}) {
        QTest::addRow("line %d", id) << id << true;
        QTest::addRow("dots %d", id) << id << false;
    }
}

void PlotterDrawingTest::colors()
{
    QFETCH(int, id);
    QFETCH(bool, lines);
    PlotterFixture fixture(7);
    fixture.plotter.curveButtons.button(id)->setChecked(true);
    fixture.lineMode->setChecked(lines);
    fixture.plotter.setCurveData(id, {fixture.at(200, 200), fixture.at(300, 200), fixture.at(400, 200)});

    const QImage image = fixture.image();
    QVERIFY(isNear(image.pixelColor(300, 200), blended(fixture.shadow, colorForIds[id % 6])));
    QCOMPARE(ink(image, QRect(240, 150, 120, 100)), lines ? QRect(240, 199, 120, 2) : QRect(299, 199, 2, 2));
}

void PlotterDrawingTest::markers()
{
    PlotterFixture fixture;
    fixture.lineMode->setChecked(false);
    fixture.plotter.setCurveData(0, {fixture.at(200, 200), fixture.at(300, 250)});
    const QImage image = fixture.image();
    const QColor marker = blended(fixture.shadow, colorForIds[0].lighter(150));
    QCOMPARE(ink(image, QRect(180, 180, 40, 40)), QRect(197, 197, 6, 6));
    QVERIFY(isNear(image.pixelColor(197, 197), marker) && isNear(image.pixelColor(202, 202), marker));
    QCOMPARE(ink(image, QRect(280, 230, 40, 40)), QRect(QPoint(293, 243), QPoint(307, 257)));
    QVERIFY(isNear(image.pixelColor(294, 250), marker) && isNear(image.pixelColor(300, 256), marker));
    QCOMPARE(image.pixelColor(297, 250), fixture.shadow); // outline only

    fixture.plotter.clearCurve(0);
    QVERIFY(ink(fixture.image(), QRect(51, 61, 497, 297)).isEmpty());
}

void PlotterDrawingTest::orderAndClip()
{
    PlotterFixture fixture;
    fixture.plotter.curveButtons.button(1)->setChecked(true);
    fixture.plotter.setCurveData(1, {fixture.at(-500, 200), fixture.at(2000, 200)});
    fixture.plotter.setCurveData(0, {fixture.at(-500, 200), fixture.at(2000, 200)});
    QImage image = fixture.image();
    QVERIFY(isNear(image.pixelColor(300, 200), blended(blended(fixture.shadow, colorForIds[0]), colorForIds[1])));
    QCOMPARE(ink(image, QRect(51, 180, 498, 40)), QRect(52, 199, 496, 2));

    // A square plot area moves the frame and the grid, not the clip.
    fixture.aspect->setChecked(true);
    fixture.plotter.setCurveData(1, {fixture.at(300, -500), fixture.at(300, 1000)});
    image = fixture.image();
    QCOMPARE(image.pixelColor(349, 100), QColor(Qt::white));
    QCOMPARE(ink(image, QRect(351, 50, 249, 310)), QRect(351, 199, 547 - 350, 2));
    QCOMPARE(ink(image, QRect(180, 61, 40, 298)).adjusted(0, 1, 0, -1).height(), 294);
}

void PlotterDrawingTest::visibility_data()
{
    QTest::addColumn<int>("checked");
    QTest::addColumn<bool>("all");
    QTest::addColumn<QList<int>>("listed");
    QTest::addColumn<QList<int>>("drawn");
    QTest::newRow("none") << -1 << false << QList<int>() << QList<int>();
    QTest::newRow("one") << 2 << false << QList<int>({2}) << QList<int>({2});
    QTest::newRow("all") << 2 << true << QList<int>({0, 1, 2, 3}) << QList<int>({-1, 0, 1, 2, 3, 4});
}

void PlotterDrawingTest::visibility()
{
    QFETCH(int, checked);
    QFETCH(bool, all);
    QFETCH(QList<int>, listed);
    QFETCH(QList<int>, drawn);
    PlotterFixture fixture; // the ids -1 and 4 have no box
    for (int id = -1; id <= 4; ++id) {
        fixture.plotter.setCurveData(id, {fixture.at(60, 150 + 30 * id), fixture.at(540, 150 + 30 * id)});
    }
    const QImage before = fixture.image();
    for (int id = 0; id < 4; ++id) {
        fixture.plotter.curveButtons.button(id)->setChecked(id == checked);
    }
    fixture.plotter.showAllDataCheck->setChecked(all);
    QCOMPARE(fixture.image(), before); // takes effect at the next redraw

    fixture.plotter.clearCurve(99);
    const QImage image = fixture.image();
    for (int id = -1; id <= 4; ++id) {
        const QColor color = blended(fixture.shadow, colorForIds[(id + 6) % 6]);
        QVERIFY(isNear(image.pixelColor(300, 150 + 30 * id), drawn.contains(id) ? color : fixture.shadow));
        QCOMPARE(!textOfCurve(image, legendOfY, (id + 6) % 6).isEmpty(), listed.contains(id));
        QCOMPARE(!textOfCurve(image, legendOfX, (id + 6) % 6).isEmpty(), listed.contains(id));
    }
}

void PlotterDrawingTest::legendFollowsNames()
{
    PlotterFixture fixture;
    QAbstractButton *const box = fixture.plotter.curveButtons.button(0);
    box->setProperty(DynamicProperty::CaptureX, QStringLiteral("Motor 0 position"));
    box->setProperty(DynamicProperty::CaptureY, QStringLiteral("Supply"));
    fixture.plotter.curveButtons.button(2)->setChecked(true);
    fixture.plotter.clearCurve(0);

    const QImage image = fixture.image();
    const QFontMetrics metrics = fixture.plotter.fontMetrics();
    const int firstX = 600 - 4 - metrics.horizontalAdvance(":X") - 3 - metrics.horizontalAdvance("Motor 0 position");
    const int secondX = firstX - 5 - metrics.horizontalAdvance("X3");
    QVERIFY(std::abs(textOfCurve(image, legendOfX, 0).left() - firstX) <= 3);
    QVERIFY(std::abs(textOfCurve(image, legendOfX, 2).left() - secondX) <= 3);
    const int firstY = metrics.horizontalAdvance("Y:") + 4;
    const int secondY = firstY + metrics.horizontalAdvance("Supply") + 5;
    QVERIFY(std::abs(textOfCurve(image, legendOfY, 0).left() - firstY) <= 3);
    QVERIFY(std::abs(textOfCurve(image, legendOfY, 2).left() - secondY) <= 3);
}

void PlotterDrawingTest::grid()
{
    PlotterFixture fixture;
    fixture.plotter.setPlotSettings(ranges(0.0, 1.0, 0.0, 10.0)); // fractions along X
    const QImage image = fixture.image();
    for (int index = 0; index <= 5; ++index) {
        const int x = 50 + 499 * index / 5;
        const int y = static_cast<int>(359.0 - 299.0 * index / 5.0);
        const bool inside = index > 0 && index < 5;
        QCOMPARE(image.pixelColor(x, 200), inside ? QColor(90, 90, 90) : QColor(Qt::white));
        QCOMPARE(image.pixelColor(300, y), inside ? QColor(90, 90, 90) : QColor(Qt::white));
        QCOMPARE(ink(image, QRect(x - 5, 362, 10, 1)), QRect(x, 362, 1, 1));
        QCOMPARE(ink(image, QRect(x - 20, 367, 40, 11)).isEmpty(), inside);
        QVERIFY(ink(image, QRect(20, y - 3, 25, 7)).right() >= 42); // right-aligned
    }
}

void PlotterDrawingTest::wideLabelsAreNotCut()
{
    for (const double top : {150000.0, 2e9}) {
        PlotterFixture fixture;
        fixture.plotter.setPlotSettings(ranges(-top, 1.0, -top, top, 1));
        const QImage image = fixture.image();
        const QRect label(0, 50, 45, 20);
        int inkAtTheEdge = 0;
        int ink = 0;
        for (int y = label.top(); y <= label.bottom(); ++y) {
            for (int x = 0; x < label.width(); ++x) {
                const bool isInk = image.pixelColor(x, y) != fixture.shadow && y > 55; // below the legend
                ink += isInk ? 1 : 0;
                inkAtTheEdge += isInk && x == 0 ? 1 : 0;
            }
        }
        QVERIFY(ink > 20);
        QCOMPARE(inkAtTheEdge, 0);
    }
}

void PlotterDrawingTest::smallWidgets()
{
    for (const QSize &size : {QSize(100, 300), QSize(300, 100), QSize(101, 101), QSize(104, 103)}) {
        PlotterFixture fixture;
        fixture.plotter.resize(size);
        fixture.plotter.setCurveData(0, {QPointF(0, 0), QPointF(499, 299)});
        const bool isEmpty = size.width() <= 100 || size.height() <= 100;
        QCOMPARE(ink(fixture.image(), QRect(QPoint(0, 38), QPoint(size.width() - 1, 99))).isEmpty(), isEmpty);
    }
}

/// Nothing here may hang, crash or make the painter complain, and none of it lasts.
void PlotterDrawingTest::extremes()
{
    PlotterFixture fixture;
    const QImage before = fixture.image();
    fixture.plotter.setCurveData(0, {QPointF(1.0e300, -1.0e300), QPointF(-3.0e9, 1.0e18), QPointF(5, 5)});
    fixture.lineMode->setChecked(false);
    fixture.plotter.setCurveData(0, {QPointF(qInf(), -qInf()), QPointF(1, qInf()), QPointF(5, 5)});
    fixture.plotter.setCurveData(0, {});
    for (const double bound : {10.0, 1.0e308, qInf()}) {
        fixture.plotter.setPlotSettings(ranges(-bound, bound, -bound, bound, 0));
        fixture.plotter.setPlotSettings(ranges(-bound, bound, -bound, bound, std::numeric_limits<unsigned int>::max()));
    }
    fixture.plotter.resize(0, 0);
    fixture.plotter.resize(600, 400);
    fixture.plotter.setPlotSettings(ranges(0.0, 499.0, 0.0, 299.0, 1));
    QCOMPARE(fixture.image(), before);
}

GUARDED_TEST_MAIN(PlotterDrawingTest)
#include "PlotterDrawingTest.moc"
