#include "CurveDrawing.h"

#include "PlotGeometry.h"

#include "host/CurveColors.h"

#include <QPainter>
#include <QPen>
#include <QPolygonF>

namespace
{

constexpr double curvePenPixels = 2.0;
constexpr double markerPenPixels = 3.0;
constexpr int markerLightFactor = 150;
constexpr double squareOffsetPixels = 3.0;
constexpr double squareExtentPixels = 6.0;
constexpr double ringOffsetPixels = 6.0;
// Not twice the offset: the ring sits a quarter pixel right of and below its point, where it looks centred.
constexpr double ringExtentPixels = 12.5;

void drawMarkers(QPainter *painter, const QColor &color, const QPointF &oldest, const QPointF &newest)
{
    painter->setPen(QPen(color, markerPenPixels, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    painter->setBrush(Qt::NoBrush);
    painter->fillRect(QRectF(oldest.x() - squareOffsetPixels, oldest.y() - squareOffsetPixels, squareExtentPixels,
                             squareExtentPixels),
                      color);
    painter->drawEllipse(
        QRectF(newest.x() - ringOffsetPixels, newest.y() - ringOffsetPixels, ringExtentPixels, ringExtentPixels));
}

} // namespace

QColor curveColor(int id)
{
    const int remainder = id % curveColorCount;
    return colorForIds[remainder < 0 ? remainder + curveColorCount : remainder];
}

QRectF drawCurve(QPainter *painter, const PointMapping &mapping, const QVector<QPointF> &points,
                 const CurveStyle &style)
{
    if (points.isEmpty()) {
        return QRectF();
    }

    painter->setPen(QPen(style.color, curvePenPixels, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QPolygonF polyline;
    polyline.reserve(points.size());
    for (const QPointF &point : points) {
        polyline.append(mapping.map(point));
        if (!style.lines) {
            painter->drawPoint(polyline.constLast());
        }
    }
    if (style.lines) {
        painter->drawPolyline(polyline);
    }

    drawMarkers(painter, style.color.lighter(markerLightFactor), polyline.constFirst(), polyline.constLast());
    return polyline.boundingRect();
}
