#pragma once

#include <QColor>
#include <QPointF>
#include <QStringList>
#include <QVector>

class QPainter;
class QPolygonF;

/// Typical curves, and QPainter's way to draw them, for tests and measurements of the plot.
namespace CurveSamples
{

/// The kinds of curves: five ordinary ones, then two that cross themselves everywhere.
QStringList kinds();
constexpr int ordinaryKindCount = 5;

/// All curves lie within this from 0, in data units, and reach (nearly) as far.
constexpr double extent = 10000.0;

/// Whole numbers, the same at every call; \a variant (0 to 3) makes curves of a kind that differ but lie together.
QVector<QPointF> curve(int kind, int pointCount, int variant = 0);

/// One QPainter polyline, or one QPainter point for each dot, with a round pen.
void drawPlain(QPainter *painter, const QPolygonF &points, double penWidth, const QColor &color, bool lines);

} // namespace CurveSamples
