#pragma once

#include <QPointF>
#include <QRect>
#include <QVector>

class QColor;
class QImage;

/// A round pen and where it draws.
struct RasterPen
{
    QImage *image; ///< 32 bits per pixel, opaque or premultiplied; its pixel ratio leads to device pixels
    QRect clip;    ///< widget pixels; nothing outside is touched
    double width;  ///< widget pixels, above 0
};

/**
 * Draws curves straight into an image, in time proportional to the pixel rows that their segments reach.
 *
 * The picture is defined by distance: a device pixel belongs to a stroke when its centre lies within half the pen's
 * width of the polyline, or of the point of a dot. Edges are hard, and a centre just on the outline belongs to a stroke
 * at its left or above it. A painter that does not smooth draws the same picture but for pixels on the outline; but its
 * outlines of thousands of points that cross each other keep it busy for up to half a second.
 */
namespace CurveRaster
{

/**
 * Draws one polyline that blends once over what lies under it, however often it crosses itself.
 *
 * \param points widget pixels. NaN, infinite or beyond +-1e300: the line is interrupted there. A segment of length zero
 *               draws nothing.
 */
void drawPolyline(const RasterPen &pen, const QVector<QPointF> &points, const QColor &color);

/// Draws a dot on each of \a points (widget pixels), each blending over those before it; NaN is left out.
void drawDots(const RasterPen &pen, const QVector<QPointF> &points, const QColor &color);

} // namespace CurveRaster
