#include "CoverageMask.h"
#include "CurveRaster.h"
#include "CurveSamples.h"
#include "GuardedTest.h"
#include "PlotGeometry.h"
#include "PlotterFixture.h"
#include "RunBlender.h"

#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <cmath>
#include <random>

namespace
{

using Points = QVector<QPointF>;

constexpr QSize size(300, 200); // widget pixels
constexpr double penPixels = 2.0;
// The painter's round ends and joins are polygons.
constexpr double outlineTolerancePixels = 0.15;
const QColor color(220, 20, 60, 195);

/// Where and how a curve is drawn.
struct View
{
    double zoom = 1.0;
    bool square = false;
    bool lines = true;
    double ratio = 1.0;
};

Points mapped(const Points &points, const View &view)
{
    // Zoomed around a point of the curve, so that a part of it is visible.
    const QPointF centre = view.zoom == 1.0 ? QPointF() : points.at(points.size() / 2);
    const double range = 1.05 * CurveSamples::extent / view.zoom;
    const PointMapping mapping =
        PlotGeometry(size, view.square)
            .mapping(ranges(centre.x() - range, centre.x() + range, centre.y() - range, centre.y() + range));
    Points polyline;
    for (const QPointF &point : points) {
        polyline.append(mapping.map(point));
    }
    return polyline;
}

QImage drawn(const Points &points, const View &view, bool plain = false)
{
    static CoverageMask mask; // nothing of an earlier picture may be left in it
    QImage image(size * view.ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(view.ratio);
    image.fill(QColor(10, 20, 30));
    const QRect clip = PlotGeometry(size, view.square).clipRectangle();
    if (plain) {
        QPainter painter(&image);
        painter.setClipRect(clip);
        CurveSamples::drawPlain(&painter, points, penPixels, color, view.lines);
    } else if (view.lines) {
        CurveRaster::drawPolyline({&image, clip, penPixels}, points, color, &mask);
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

/// The distance of \a point from the outline of the stroke, or of the nearest dot; device pixels.
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

/// The pixels of curves: those of QPainter, except for pixels whose centre is on the outline.
class CurvePictureTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void likeThePainter_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<bool>("lines");
        const QStringList kinds = CurveSamples::kinds();
        for (int kind = 0; kind < kinds.size(); ++kind) {
            QTest::addRow("%s, line", qPrintable(kinds.at(kind))) << kind << true;
            QTest::addRow("%s, dots", qPrintable(kinds.at(kind))) << kind << false;
        }
    }

    void likeThePainter()
    {
        QFETCH(int, kind);
        QFETCH(bool, lines);
        const Points points = CurveSamples::curve(kind, 2000, kind % 4);
        const View views[] = {{1.0, false, lines, 1.0},  {3.0, false, lines, 1.0}, {10.0, false, lines, 1.0},
                              {100.0, true, lines, 1.0}, {1.0, true, lines, 1.0},  {1.0, false, lines, 2.0},
                              {2.0, false, lines, 1.5}};
        for (const View &view : views) {
            const Points polyline = mapped(points, view);
            const QImage ours = drawn(polyline, view);
            const QImage plain = drawn(polyline, view, true);
            const QRgb background = plain.pixel(0, 0);
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
            const QString what = QStringLiteral("zoom %1 ratio %2 worst %3 differing %4 of %5");
            const QString report = what.arg(view.zoom).arg(view.ratio).arg(worst).arg(differing).arg(inked);
            QVERIFY2(inked > 0 && worst <= outlineTolerancePixels, qPrintable(report));
            QVERIFY2(!lines || view.zoom > 1.0 || differing <= inked / 100, qPrintable(report));
        }
    }

    void capsule()
    {
        const struct
        {
            QPointF from;
            QPointF to;
            double radius;
        } capsules[] = {
            {{30.2, 20.3}, {30.9, 20.1}, 1.0},       // short
            {{5.2, 20.3}, {90.9, 20.3 + 1e-7}, 1.0}, // nearly level
            {{90.2, 20.3}, {5.2, 20.3 + 1e-5}, 1.5}, // hardly rising
            {{30.2, 50.3}, {31.9, 3.1}, 1.5},        // steep
            {{70.3, 50.3}, {70.3, 3.1}, 9.0},        // upright, wide
            {{80.2, 50.3}, {31.9, 3.1}, 4.0},        // slanted
            {{-500.1, -200.2}, {700.2, 301.3}, 3.0}, // over all edges
            {{-3.1, 2.2}, {3.2, -3.1}, 2.0},         // into a corner
            {{50.1, 30.2}, {-7e8, 3e9}, 1.0},        // far away
            {{-3.1, -30.2}, {-2.1, 99}, 2.0},        // outside
        };
        const QSize area(100, 60);
        CoverageMask mask;
        for (const auto &stroke : capsules) {
            mask.reset(area, stroke.radius);
            mask.addSegment(stroke.from, stroke.to);
            QSet<int> covered;
            const auto add = [&](int row, int first, quint64 bits) {
                for (int column = first; column < qMin(first + 64, area.width()); ++column) {
                    if ((bits >> (column - first) & 1) != 0) {
                        covered.insert(row * area.width() + column);
                    }
                }
            };
            const QRect pixels(QPoint(), area);
            mask.visitWords(add, [&](int row, int column) { QVERIFY(pixels.contains(column, row)); });
            for (int pixel = 0; pixel < area.width() * area.height(); ++pixel) {
                const int row = pixel / area.width();
                const QPointF centre(pixel % area.width() + 0.5, row + 0.5);
                const double off = distance(centre, stroke.from, stroke.to) - stroke.radius;
                if (std::abs(off) > 1e-5) {
                    QCOMPARE(covered.contains(pixel), off < 0);
                }
            }
        }
    }

    /// All ways of blending do the same, and nothing to pixels that are not covered.
    void blending()
    {
        std::mt19937_64 random(1);
        const QVector<BlendWay> ways = blendWays();
        for (const int alpha : {0, 1, 100, 195, 254, 255}) {
            const BlendColor over = {qPremultiply(qRgba(220, 20, 60, alpha)), static_cast<quint16>(255 - alpha)};
            for (const quint64 covered : {quint64(0), ~quint64(0), quint64(1), quint64(1) << 63, quint64(random())}) {
                QVector<quint32> before(blendedPixels);
                std::generate(before.begin(), before.end(), [&] { return 0xff000000U | quint32(random()); });
                QVector<quint32> expected = before;
                for (int pixel = 0; pixel < blendedPixels; ++pixel) {
                    if ((covered >> pixel & 1) != 0) {
                        expected[pixel] = blended(before.at(pixel), over);
                    }
                }
                for (const BlendWay way : ways) {
                    QVector<quint32> pixels = before;
                    way(pixels.data(), covered, over);
                    QCOMPARE(pixels, expected);
                }
            }
        }
    }

    /// NaN, infinite and too large coordinates interrupt a line; all others are drawn within the clip rectangle.
    void hostilePoints()
    {
        View view;
        const double none = qQNaN();
        const Points seen = {{100, 100}, {120, 150}, {200, 120}};
        Points points = {{none, 0}, {100, 100}, {120, 150}, {200, 120}, {qInf(), 120}, {5e307, -1e301}, {1, -qInf()}};
        QCOMPARE(drawn(points, view), drawn(seen, view));

        const QImage level = drawn({{0, 100}, {300, 100}}, view);
        for (const double far : {1e4, 1e9, 1e18, 9e299}) {
            QCOMPARE(drawn({{-far, 100}, {far, 100}}, view), level);
            QCOMPARE(drawn({{far, 100}, {150, 100}, {-far, 100}}, view), level);
            const QImage slanted = drawn({{150, 100}, {150 + far, 100 + far}}, view);
            QVERIFY(slanted.pixel(190, 140) != slanted.pixel(0, 0));
        }
        for (const double x : {-1e300, -3e9, 0.0, 1e-310, 150.0, 2147483648.0, 1e18, 1e300, qInf(), none}) {
            for (const double y : {-1e300, -1e17, -1e-310, 100.0, 4294967296.0, 1e300, -qInf(), none}) {
                points.append({{x, y}, {y, x}, {150, 100}, {x, y}});
            }
        }
        for (const bool lines : {true, false}) {
            view.lines = lines;
            QCOMPARE(drawn(points, view).size(), size);
        }
    }
};

GUARDED_TEST(CurvePictureTest)
#include "CurvePictureTest.moc"
