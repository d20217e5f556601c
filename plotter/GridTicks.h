#pragma once

#include <QString>
#include <QVector>

/// One grid line with its tick.
struct GridTick
{
    int position;  ///< widget pixels along the axis
    QString label; ///< empty when the tick's value is no whole number
};

/**
 * The grid lines of one axis, both ends included.
 *
 * \param minimum,maximum the range shown, data units
 * \param intervals       number of tick intervals; 0 gives no lines
 * \param origin          position of \a minimum, widget pixels
 * \param extent          signed distance from there to the position of \a maximum, widget pixels
 *
 * When there are more intervals than pixels, only every n-th line is returned, at most one per pixel, to limit the
 * time.
 */
QVector<GridTick> gridTicks(double minimum, double maximum, unsigned int intervals, double origin, double extent);
