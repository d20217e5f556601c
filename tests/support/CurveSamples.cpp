#include "CurveSamples.h"

#include <QPainter>
#include <QPen>
#include <QPolygonF>
#include <QtMath>

#include <cmath>
#include <random>

QStringList CurveSamples::kinds()
{
    return {QStringLiteral("circle"),       QStringLiteral("Lissajous"), QStringLiteral("noisy ramp"),
            QStringLiteral("random walk"),  QStringLiteral("saw tooth"), QStringLiteral("square wave"),
            QStringLiteral("uniform noise")};
}

QVector<QPointF> CurveSamples::curve(int kind, int pointCount, int variant)
{
    // Uniform in -1 to 1; the distributions of the standard library differ between implementations.
    std::mt19937 engine(static_cast<std::mt19937::result_type>(variant + 1));
    const auto noise = [&engine] {
        return static_cast<double>(engine()) / static_cast<double>(std::mt19937::max()) * 2.0 - 1.0;
    };
    const auto sawTooth = [](double phase) { return 2.0 * (phase - std::floor(phase)) - 1.0; };
    QPointF walker;
    QVector<QPointF> points;
    points.reserve(pointCount);
    for (int index = 0; index < pointCount; ++index) {
        const double time = 2.0 * index / pointCount - 1.0;
        const double turns = index / 200.0 + variant / 4.0;
        QPointF point;
        switch (kind) {
        case 0: // with the small errors of a real motor
            point = QPointF(std::cos(2.0 * M_PI * turns), std::sin(2.0 * M_PI * turns)) *
                    (0.7 + 0.1 * variant - 0.01 * std::abs(noise()));
            break;
        case 1:
            point = {std::sin(2.0 * M_PI * 3.01 * turns), std::sin(2.0 * M_PI * 4.0 * turns)};
            break;
        case 2:
            point = {time, 0.8 * time + 0.05 * variant + 0.04 * noise()};
            break;
        case 3:
            walker += QPointF{noise(), noise()} * 0.03;
            walker = {qBound(-1.0, walker.x(), 1.0), qBound(-1.0, walker.y(), 1.0)};
            point = walker;
            break;
        case 4:
            point = {time, sawTooth(index / 100.0 + variant / 4.0)};
            break;
        case 5:
            point = {time, (index + 5 * variant) % 20 < 10 ? -1.0 + 0.1 * variant : 1.0 - 0.1 * variant};
            break;
        default:
            point = {noise(), noise()};
        }
        points.append({std::round(point.x() * extent), std::round(point.y() * extent)});
    }
    return points;
}

void CurveSamples::drawPlain(QPainter *painter, const QPolygonF &points, double penWidth, const QColor &color,
                             bool lines)
{
    painter->setPen(QPen(color, penWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (lines) {
        painter->drawPolyline(points);
        return;
    }
    for (const QPointF &point : points) {
        painter->drawPoint(point);
    }
}
