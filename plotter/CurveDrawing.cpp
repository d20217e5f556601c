#include "CurveDrawing.h"

#include "CurveRaster.h"
#include "PlotGeometry.h"

#include "host/CurveColors.h"

#include <QPainter>
#include <QPen>
#include <QRectF>

#include <algorithm>

namespace
{

constexpr int colorCount = 6; // of colorForIds, whose declaration has no size in some hosts
constexpr double curvePenPixels = 2.0;
constexpr double markerPenPixels = 3.0;
constexpr int markerLightFactor = 150;
constexpr double squareOffsetPixels = 3.0;
constexpr double squareExtentPixels = 6.0;
constexpr double ringOffsetPixels = 6.0;
// Not twice the offset: the ring looks centred a quarter pixel right of and below its point.
constexpr double ringExtentPixels = 12.5;

/// Draws the markers that are visible: QPainter draws outlines slowly even when they are clipped away.
void drawMarkers(const CurveCanvas &canvas, const QColor &color, const QPointF &oldest, const QPointF &newest)
{
    QPainter *const painter = canvas.painter;
    const QRectF sight =
        QRectF(canvas.clip).adjusted(-markerPenPixels, -markerPenPixels, markerPenPixels, markerPenPixels);
    const QRectF square(oldest.x() - squareOffsetPixels, oldest.y() - squareOffsetPixels, squareExtentPixels,
                        squareExtentPixels);
    const QRectF ring(newest.x() - ringOffsetPixels, newest.y() - ringOffsetPixels, ringExtentPixels, ringExtentPixels);
    painter->setPen(QPen(color, markerPenPixels, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    painter->setBrush(Qt::NoBrush);
    if (sight.intersects(square)) {
        painter->fillRect(square, color);
    }
    if (sight.intersects(ring)) {
        painter->drawEllipse(ring);
    }
}

} // namespace

QColor curveColor(int id)
{
    const int remainder = id % colorCount;
    return colorForIds[remainder < 0 ? remainder + colorCount : remainder];
}

void drawCurve(const CurveCanvas &canvas, const PointMapping &mapping, const QVector<QPointF> &points,
               const CurveStyle &style)
{
    if (points.isEmpty()) {
        return;
    }

    QVector<QPointF> polyline(points.size());
    std::transform(points.cbegin(), points.cend(), polyline.begin(),
                   [&mapping](const QPointF &point) { return mapping.map(point); });
    const RasterPen pen = {canvas.image, canvas.clip, curvePenPixels};
    if (style.lines) {
        CurveRaster::drawPolyline(pen, polyline, style.color, canvas.mask);
    } else {
        CurveRaster::drawDots(pen, polyline, style.color);
    }

    drawMarkers(canvas, style.color.lighter(markerLightFactor), polyline.constFirst(), polyline.constLast());
}
