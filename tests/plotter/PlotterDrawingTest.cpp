#include "GridTicks.h"
#include "PlotGeometry.h"
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

/// The pixels of labels, legend, curves and markers.
class PlotterDrawingTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void ticks()
    {
        const auto described = [](double minimum, double maximum) {
            QStringList labels;
            const QVector<GridTick> ticks = gridTicks(minimum, maximum, 5, 359.0, -299.0);
            for (const GridTick &tick : ticks) {
                labels.append(QStringLiteral("%1:%2").arg(tick.position).arg(tick.label));
            }
            return labels.join(QLatin1Char(' '));
        };
        QCOMPARE(described(0.0, 10.0), QStringLiteral("359:0 299:2 239:4 179:6 119:8 60:10")); // truncated, not rounded
        QCOMPARE(described(-2.5, 0.0), QStringLiteral("359: 299:-2 239: 179:-1 119: 60:0"));   // whole numbers only
        QCOMPARE(described(qQNaN(), 1.0), QStringLiteral("359: 299: 239: 179: 119: 60:"));
        QVERIFY(gridTicks(0.0, 10.0, std::numeric_limits<unsigned int>::max(), 50.0, 499.0).size() <= 500);
    }

    void emptyRange()
    {
        const PointMapping mapping = PlotGeometry({600, 400}, false).mapping(ranges(3.0, 3.0, 0.0, 10.0));
        QCOMPARE(mapping.map(QPointF(4, 1)), QPointF(549, 329.1));
    }

    void gridLabels()
    {
        PlotterFixture fixture;
        PlotSettings settings = ranges(0.0, 1.0, 0.0, 10.0); // fractions along X
        settings.numXTicks = 4;
        fixture.plotter.setPlotSettings(settings);
        const QImage image = fixture.image();
        for (int index = 0; index <= 4; ++index) {
            const int x = 50 + 499 * index / 4;
            const bool isInside = index > 0 && index < 4;
            QCOMPARE(ink(image, QRect(x - 20, 367, 40, 11)).isEmpty(), isInside);
        }
        for (int index = 0; index <= 5; ++index) {
            const int y = static_cast<int>(359.0 - 299.0 * index / 5.0);
            QVERIFY(ink(image, QRect(20, y - 3, 25, 7)).right() >= 42); // right-aligned
        }
    }

    void wideLabelsAreNotCut()
    {
        QLocale::setDefault(QLocale(QLocale::German)); // whose group separator is no higher than the digits
        for (const double bottom : {150000.0, 2e9}) {
            PlotterFixture fixture;
            fixture.plotter.setPlotSettings(ranges(-bottom, 1.0, -bottom, 0.0, 1));
            const QImage image = fixture.image();
            const QRect label = ink(image, QRect(0, 350, 45, 14));
            QVERIFY(label.width() > 20 && label.left() > 0);
            QCOMPARE(ink(image, QRect(0, 56, 45, 14)).height(), label.height()); // of a lone 0, below the legend
        }
        QLocale::setDefault(QLocale::c());
    }

    /// Text that is too high for its place is drawn smaller instead of cut off: a cut letter is wider than high.
    void highText()
    {
        for (const int points : {7, 9, 10, 12, 16, 30, 60}) {
            PlotterFixture fixture;
            fixture.plotter.setFont(QFont(QStringLiteral("DejaVu Sans"), points));
            const QList<QAbstractButton *> buttons = fixture.plotter.curveButtons.buttons();
            for (QAbstractButton *const button : buttons) {
                button->setProperty(DynamicProperty::CaptureX, "E");
                button->setProperty(DynamicProperty::CaptureY, "E");
            }
            fixture.plotter.setPlotSettings(ranges(8.0, 8.5, 7.5, 8.0, 1)); // one label on each axis
            const QImage image = fixture.plotter.grab().toImage().convertToFormat(QImage::Format_RGB32);
            const int fontHeight = fixture.plotter.fontMetrics().tightBoundingRect(QStringLiteral("8")).height();
            const QRect letters[] = {
                ink(image, QRect(20, 51, 25, 19)),              // the label on the Y axis
                ink(image, QRect(0, 365, 100, 14)),             // the label on the X axis
                textOfCurve(image, QRect(0, 35, 300, 25), 0),   // the legend of Y, below the controls' icons
                textOfCurve(image, QRect(300, 379, 300, 21), 0) // the legend of X
            };
            for (const QRect &letter : letters) {
                QVERIFY(letter.height() > letter.width());
                QVERIFY(letter.height() >= qMin(fontHeight - 1, 9)); // as large as the place holds
                QVERIFY(letter.height() <= fontHeight + 1);
            }
            QVERIFY(letters[2].bottom() < 60 && letters[3].bottom() < 399);
            QCOMPARE(fixture.image().pixelColor(300, 60), QColor(Qt::white)); // the frame is not shrunk
        }
    }

    /// Numbers in the curves' colours, but for the last one.
    void boxIcons()
    {
        const Plotter plotter(4);
        for (int id = 0; id < 4; ++id) {
            const QColor color = id == 3 ? plotter.palette().color(QPalette::Light) : colorForIds[id];
            const QImage icon = plotter.curveButtons.button(id)->icon().pixmap(48, 48).toImage();
            const auto isInColor = [&](const QColor &pixel) {
                return pixel.alpha() > 150 && isNear(pixel, QColor(color.rgb()));
            };
            QVERIFY(!bounds(icon, icon.rect(), isInColor).isEmpty());
        }
    }

    void markers()
    {
        PlotterFixture fixture;
        fixture.lineMode->setChecked(false);
        fixture.plotter.setCurveData(0, {fixture.at(200, 200), fixture.at(250, 225), fixture.at(300, 250)});
        const QImage image = fixture.image();
        QCOMPARE(ink(image, QRect(230, 205, 40, 40)), QRect(249, 224, 2, 2));
        const QColor marker = blended(fixture.shadow, colorForIds[0].lighter(150));
        QCOMPARE(ink(image, QRect(180, 180, 40, 40)), QRect(197, 197, 6, 6));
        QVERIFY(isNear(image.pixelColor(197, 197), marker) && isNear(image.pixelColor(202, 202), marker));
        QCOMPARE(ink(image, QRect(280, 230, 40, 40)), QRect(QPoint(293, 243), QPoint(307, 257)));
        QVERIFY(isNear(image.pixelColor(294, 250), marker) && isNear(image.pixelColor(300, 256), marker));
        QCOMPARE(image.pixelColor(297, 250), fixture.shadow); // outline only

        fixture.plotter.setCurveData(0, {fixture.at(50, 200), fixture.at(300, 250)}); // cut off at the frame
        QVERIFY(ink(fixture.image(), QRect(45, 190, 5, 20)).isEmpty());
        fixture.plotter.clearCurve(0);
        QVERIFY(ink(fixture.image(), QRect(51, 61, 497, 297)).isEmpty());
    }

    void orderAndClip()
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

    void visibility()
    {
        for (const bool all : {false, true}) {
            PlotterFixture fixture;
            const int ids[] = {-1, 0, 1, 2, 3, 4, 6}; // -1, 4 and 6 have no box
            for (const int id : ids) {
                fixture.plotter.setCurveData(id, {fixture.at(60, 150 + 30 * id), fixture.at(540, 150 + 30 * id)});
            }
            const QImage before = fixture.image();
            fixture.plotter.curveButtons.button(0)->setChecked(false);
            fixture.plotter.curveButtons.button(2)->setChecked(true);
            fixture.plotter.showAllDataCheck->setChecked(all);
            QCOMPARE(fixture.image(), before); // takes effect at the next redraw

            fixture.plotter.clearCurve(99);
            const QImage image = fixture.image();
            for (const int id : ids) {
                const int colorId = (id + 6) % 6;
                const QColor color = blended(fixture.shadow, colorForIds[colorId]);
                const bool isListed = colorId == 2 || (all && colorId < 4);
                QVERIFY(isNear(image.pixelColor(300, 150 + 30 * id), all || id == 2 ? color : fixture.shadow));
                QCOMPARE(!textOfCurve(image, legendOfY, colorId).isEmpty(), isListed);
                QCOMPARE(!textOfCurve(image, legendOfX, colorId).isEmpty(), isListed);
            }
        }
    }

    void legendFollowsNames()
    {
        PlotterFixture fixture;
        fixture.plotter.curveButtons.button(0)->setProperty(DynamicProperty::CaptureX, "Motor 0 position");
        fixture.plotter.curveButtons.button(0)->setProperty(DynamicProperty::CaptureY, "Supply");
        fixture.plotter.curveButtons.button(2)->setChecked(true);
        fixture.plotter.clearCurve(0);
        const QImage image = fixture.image();
        const QFontMetrics metrics = fixture.plotter.fontMetrics();
        const int firstX =
            600 - 4 - metrics.horizontalAdvance(":X") - 3 - metrics.horizontalAdvance("Motor 0 position");
        const int secondY = metrics.horizontalAdvance("Y:") + 4 + metrics.horizontalAdvance("Supply") + 5;
        QVERIFY(std::abs(textOfCurve(image, legendOfX, 0).left() - firstX) <= 3);
        QVERIFY(std::abs(textOfCurve(image, legendOfX, 2).right() - (firstX - 5)) <= 3); // leftwards
        QVERIFY(std::abs(textOfCurve(image, legendOfY, 2).left() - secondY) <= 3);
    }

    /// No hang, crash or warning of the painter, and no lasting effect.
    void extremes()
    {
        PlotterFixture fixture;
        const QImage before = fixture.image();
        fixture.plotter.setCurveData(0, {QPointF(1.0e300, -1.0e300), QPointF(-3.0e9, 1.0e18), QPointF(5, 5)});
        fixture.lineMode->setChecked(false);
        fixture.plotter.setCurveData(0, {QPointF(qInf(), -qInf()), QPointF(1, qInf()), QPointF(5, 5)});
        fixture.plotter.setCurveData(0, {});
        for (const double bound : {10.0, 1.0e308, qInf()}) {
            for (const unsigned int intervals : {0U, std::numeric_limits<unsigned int>::max()}) {
                fixture.plotter.setPlotSettings(ranges(-bound, bound, -bound, bound, intervals));
            }
        }
        for (const QSize &size : {QSize(0, 0), QSize(100, 300), QSize(300, 100), QSize(101, 101), QSize(600, 400)}) {
            fixture.plotter.resize(size);
        }
        fixture.plotter.setPlotSettings(ranges(0.0, 499.0, 0.0, 299.0, 1));
        QCOMPARE(fixture.image(), before);
    }
};

GUARDED_TEST(PlotterDrawingTest)
#include "PlotterDrawingTest.moc"
