#pragma once

#include <QPointF>
#include <QRect>
#include <QVector>

class CoverageMask;
class QColor;
class QImage;

/// A round pen and its target.
struct RasterPen
{
    QImage *image; ///< 32 bits per pixel, opaque or premultiplied; its pixel ratio leads to device pixels
    QRect clip;    ///< widget pixels; nothing outside is touched
    double width;  ///< widget pixels, above 0
};

/**
 * Draws curves directly into an image, in time proportional to the pixel rows of their segments.
 *
 * A device pixel is covered when its centre lies within half the pen's width of the polyline, or of the point of a dot.
 * There is no antialiasing; a centre exactly on the outline belongs to a stroke at its left or above it. QPainter
 * without antialiasing draws the same, except for pixels on the outline, but takes up to half a second for thousands of
 * points whose segments cross each other.
 */
namespace CurveRaster
{

/**
 * Draws one polyline. Each pixel is blended once, even where the line crosses itself.
 *
 * \param points widget pixels. NaN, infinite or beyond +-1e300: the line is interrupted there. A segment of length zero
 *               draws nothing.
 * \param mask   working memory, which may be used again for the next line
 */
void drawPolyline(const RasterPen &pen, const QVector<QPointF> &points, const QColor &color, CoverageMask *mask);

/// Draws a dot on each of \a points (widget pixels), each blended over the previous ones; NaN is skipped.
void drawDots(const RasterPen &pen, const QVector<QPointF> &points, const QColor &color);

} // namespace CurveRaster
