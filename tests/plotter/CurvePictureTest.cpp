#include "CoverageMask.h"
#include "CurveRaster.h"
#include "CurveSamples.h"
#include "GuardedTest.h"
#include "PlotGeometry.h"
#include "PlotterFixture.h"

#include <QPainter>
#include <QPolygonF>

#include <cmath>

namespace
{

using Points = QVector<QPointF>;

constexpr double penPixels = 2.0;
// The painter's round ends and joins are polygons.
constexpr double outlineTolerancePixels = 0.15;
const QColor color(220, 20, 60, 195);

/// Where and how a curve is drawn.
struct View
{
    QSize size = QSize(600, 400); // widget pixels
    double zoom = 1.0;
    bool square = false;
    bool lines = true;
    double ratio = 1.0;
};

Points mapped(const Points &points, const View &view)
{
    // Zoomed around a point of the curve, so that there is something to see.
    const QPointF centre = view.zoom == 1.0 ? QPointF() : points.at(points.size() / 2);
    const double range = 1.05 * CurveSamples::extent / view.zoom;
    const PointMapping mapping =
        PlotGeometry(view.size, view.square)
            .mapping(ranges(centre.x() - range, centre.x() + range, centre.y() - range, centre.y() + range));
    Points polyline;
    for (const QPointF &point : points) {
        polyline.append(mapping.map(point));
    }
    return polyline;
}

QImage canvas(const View &view)
{
    QImage image(view.size * view.ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(view.ratio);
    image.fill(QColor(10, 20, 30));
    return image;
}

QImage drawn(const Points &points, const View &view, bool plain)
{
    QImage image = canvas(view);
    const QRect clip = PlotGeometry(view.size, view.square).clipRectangle();
    if (plain) {
        QPainter painter(&image);
        painter.setClipRect(clip);
        CurveSamples::drawPlain(&painter, points, penPixels, color, view.lines);
    } else if (view.lines) {
        CurveRaster::drawPolyline({&image, clip, penPixels}, points, color);
    } else {
        CurveRaster::drawDots({&image, clip, penPixels}, points, color);
    }
    return image;
}

double distance(const QPointF &point, const QPointF &from, const QPointF &to)
{
    const QPointF along = to - from;
    const double length2 = QPointF::dotProduct(along, along);
    const double share = length2 > 0.0 ? qBound(0.0, QPointF::dotProduct(point - from, along) / length2, 1.0) : 0.0;
    const QPointF off = point - from - along * share;
    return std::hypot(off.x(), off.y());
}

/// How far \a point is from the nearest part of the outline of a stroke's segment or dot; device pixels. In line mode
/// only the outline of the whole stroke counts: the nearest segment tells its distance.
double distanceFromOutline(const QPointF &point, const Points &points, const View &view)
{
    const double radius = penPixels / 2.0 * view.ratio;
    double nearest = qInf();
    double nearestDot = qInf(); // each dot blends for itself, so that the outline of each is one
    for (int index = 0; index < points.size(); ++index) {
        const QPointF to = points.at(index) * view.ratio;
        const QPointF from = view.lines && index > 0 ? points.at(index - 1) * view.ratio : to;
        const double off = distance(point, from, to);
        nearest = qMin(nearest, off);
        nearestDot = qMin(nearestDot, std::abs(off - radius));
    }
    return view.lines ? std::abs(nearest - radius) : nearestDot;
}

} // namespace

/// The curves' picture: what the toolkit's painter draws, but for pixels whose centre is on the outline.
class CurvePictureTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void likeThePainter_data();
    void likeThePainter();
    void capsule_data();
    void capsule();
    void fewPoints();
    void runs();
    void hostilePoints();
};

void CurvePictureTest::likeThePainter_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("lines");
    const QStringList kinds = CurveSamples::kinds();
    for (int kind = 0; kind < kinds.size(); ++kind) {
        QTest::addRow("%s, line", qPrintable(kinds.at(kind))) << kind << true;
        QTest::addRow("%s, dots", qPrintable(kinds.at(kind))) << kind << false;
    }
}

void CurvePictureTest::likeThePainter()
{
    QFETCH(int, kind);
    QFETCH(bool, lines);
    const Points points = CurveSamples::curve(kind, 2000, kind % 4);
    const QSize size(300, 200);
    const QVector<View> views = {{size, 1.0, false, lines, 1.0},  {size, 3.0, false, lines, 1.0},
                                 {size, 10.0, false, lines, 1.0}, {size, 100.0, true, lines, 1.0},
                                 {size, 1.0, true, lines, 1.0},   {size, 1.0, false, lines, 2.0},
                                 {size, 2.0, false, lines, 1.5}};
    for (const View &view : views) {
        const Points polyline = mapped(points, view);
        const QImage ours = drawn(polyline, view, false);
        const QImage plain = drawn(polyline, view, true);
        const QRgb background = canvas(view).pixel(0, 0);
        int inked = 0;
        int differing = 0;
        double worst = 0.0;
        for (int y = 0; y < ours.height(); ++y) {
            for (int x = 0; x < ours.width(); ++x) {
                inked += plain.pixel(x, y) != background ? 1 : 0;
                if (ours.pixel(x, y) != plain.pixel(x, y)) {
                    ++differing;
                    worst = qMax(worst, distanceFromOutline({x + 0.5, y + 0.5}, polyline, view));
                }
            }
        }
        const QByteArray what = QByteArrayLiteral("zoom ") + QByteArray::number(view.zoom) + " ratio " +
                                QByteArray::number(view.ratio) + " worst " + QByteArray::number(worst) + " differing " +
                                QByteArray::number(differing) + " of " + QByteArray::number(inked);
        QVERIFY2(inked > 0, what);
        QVERIFY2(worst <= outlineTolerancePixels, what);
        QVERIFY2(!lines || view.zoom > 1.0 || differing <= inked / 100, what);
    }
}

void CurvePictureTest::capsule_data()
{
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    QTest::addColumn<double>("radius");
    QTest::newRow("short") << QPointF(30.2, 20.3) << QPointF(30.9, 20.1) << 1.0;
    QTest::newRow("shallow") << QPointF(5.2, 20.3) << QPointF(90.9, 21.1) << 1.0;
    QTest::newRow("nearly level") << QPointF(5.2, 20.3) << QPointF(90.9, 20.3 + 1e-7) << 1.0;
    QTest::newRow("hardly rising") << QPointF(90.2, 20.3) << QPointF(5.2, 20.3 + 1e-5) << 1.5;
    QTest::newRow("steep") << QPointF(30.2, 50.3) << QPointF(31.9, 3.1) << 1.5;
    QTest::newRow("upright, wide") << QPointF(70.3, 50.3) << QPointF(70.3, 3.1) << 9.0;
    QTest::newRow("slanted") << QPointF(80.2, 50.3) << QPointF(31.9, 3.1) << 4.0;
    QTest::newRow("over all edges") << QPointF(-500.1, -200.2) << QPointF(700.2, 301.3) << 3.0;
    QTest::newRow("into a corner") << QPointF(-3.1, 2.2) << QPointF(3.2, -3.1) << 2.0;
    QTest::newRow("far away") << QPointF(50.1, 30.2) << QPointF(-7e8, 3e9) << 1.0;
    QTest::newRow("outside") << QPointF(-3.1, -30.2) << QPointF(-2.1, 99) << 2.0;
}

void CurvePictureTest::capsule()
{
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    QFETCH(double, radius);
    const QSize size(100, 60);
    CoverageMask mask(size, radius);
    mask.addSegment(from, to);
    QVector<QPoint> covered;
    mask.visitRuns([&covered](int row, int first, int count) {
        for (int column = first; column < first + count; ++column) {
            covered.append({column, row});
        }
    });
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const double off = distance({x + 0.5, y + 0.5}, from, to);
            if (std::abs(off - radius) > 1e-5) {
                QCOMPARE(covered.contains({x, y}), off < radius);
            }
        }
    }
}

void CurvePictureTest::fewPoints()
{
    const QPointF middle(300.3, 200.4);
    for (const bool lines : {true, false}) {
        View view;
        view.lines = lines;
        QCOMPARE(drawn({middle}, view, false), drawn({middle}, view, true));
        QCOMPARE(drawn({middle, middle, middle}, view, false), drawn({middle, middle, middle}, view, true));
    }
    const QPointF end(310, 190);
    QCOMPARE(drawn({middle, middle, end, end}, View(), false), drawn({middle, end}, View(), false));
}

void CurvePictureTest::runs()
{
    CoverageMask mask(QSize(200, 3), 1.0);
    mask.addSegment({-10, 1.5}, {130.1, 1.5}); // the centres of the rows above and below are on the outline
    mask.addSegment({150, 1.5}, {400, 1.5});
    QStringList found;
    mask.visitRuns([&found](int row, int first, int count) {
        found.append(QStringLiteral("%1:%2+%3").arg(row).arg(first).arg(count));
    });
    const QStringList middle = {"1:0+64", "1:64+64", "1:128+3", "1:149+43", "1:192+8"};
    const QStringList below = {"2:0+64", "2:64+64", "2:128+2", "2:150+42", "2:192+8"};
    QCOMPARE(found, middle + below);
}

/// What is no number or out of reach interrupts; everything else shows where it crosses the clip rectangle.
void CurvePictureTest::hostilePoints()
{
    const View view;
    const double none = qQNaN();
    const Points seen = {{100, 100}, {200, 150}, {400, 120}};
    Points points = {{none, 0}, {100, 100}, {200, 150}, {400, 120}, {qInf(), 120}, {5e307, -1e301}, {1, -qInf()}};
    QCOMPARE(drawn(points, view, false), drawn(seen, view, false));

    const QImage level = drawn({{0, 200}, {600, 200}}, view, false);
    for (const double far : {1e4, 1e9, 1e18, 9e299}) {
        QCOMPARE(drawn({{-far, 200}, {far, 200}}, view, false), level);
        QCOMPARE(drawn({{far, 200}, {300, 200}, {-far, 200}}, view, false), level);
        const QImage slanted = drawn({{300, 200}, {300 + far, 200 + far}}, view, false);
        QVERIFY(slanted.pixel(430, 330) != slanted.pixel(0, 0));
    }
    for (const double x : {-1e300, -3e9, 0.0, 1e-310, 300.0, 2147483648.0, 1e18, 1e300, qInf(), none}) {
        for (const double y : {-1e300, -1e17, -1e-310, 200.0, 4294967296.0, 1e300, -qInf(), none}) {
            points.append({{x, y}, {y, x}, {300, 200}, {x, y}});
        }
    }
    for (const bool lines : {true, false}) {
        View dense = view;
        dense.lines = lines;
        QCOMPARE(drawn(points, dense, false).size(), view.size);
    }
}

GUARDED_TEST_MAIN(CurvePictureTest)
#include "CurvePictureTest.moc"
