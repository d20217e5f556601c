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
 * \param intervals       number of tick intervals; 0 gives no line, for there is no step
 * \param origin          position of \a minimum, widget pixels
 * \param extent          signed way from there to the position of \a maximum, widget pixels
 *
 * More intervals than pixels are thinned out evenly to one line per pixel at most, so that any count is drawn in time.
 */
QVector<GridTick> gridTicks(double minimum, double maximum, unsigned int intervals, double origin, double extent);
