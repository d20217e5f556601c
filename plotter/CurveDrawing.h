#pragma once

#include <QColor>
#include <QPointF>
#include <QRectF>
#include <QVector>

class PointMapping;
class QPainter;

/// The colour of curve \a id, translucent for some; any id has one.
QColor curveColor(int id);

/// How one curve looks.
struct CurveStyle
{
    QColor color;      ///< may be translucent
    bool lines = true; ///< one polyline through the points instead of separate dots
};

/**
 * Draws one curve with its markers: a square on the oldest point, a ring around the newest.
 *
 * Cuts nothing off: clipping is the painter's. Changes the painter's pen and brush. No points draw nothing.
 * \param points data units, in the order of recording
 * \return the bounds of the points in widget pixels
 */
QRectF drawCurve(QPainter *painter, const PointMapping &mapping, const QVector<QPointF> &points,
                 const CurveStyle &style);
