#pragma once

#include <QColor>
#include <QPointF>
#include <QRect>
#include <QVector>

class CoverageMask;
class PointMapping;
class QImage;
class QPainter;

/// The colour of curve \a id, which may be any number; some colours are translucent.
QColor curveColor(int id);

/// The look of one curve.
struct CurveStyle
{
    QColor color;      ///< may be translucent
    bool lines = true; ///< one polyline through the points instead of separate dots
};

/// The target of a curve: its points are drawn directly into the image, its markers by the painter.
struct CurveCanvas
{
    QPainter *painter;  ///< on the image, clipped to \a clip
    QImage *image;      ///< 32 bits per pixel, opaque or premultiplied
    QRect clip;         ///< widget pixels
    CoverageMask *mask; ///< working memory for lines
};

/**
 * Draws one curve with its markers: a square on the oldest point, a ring around the newest.
 *
 * Changes the painter's pen and brush. Without points nothing is drawn.
 * \param points data units, in the order of recording
 */
void drawCurve(const CurveCanvas &canvas, const PointMapping &mapping, const QVector<QPointF> &points,
               const CurveStyle &style);
