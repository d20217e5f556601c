#pragma once

/**
 * The part of the data plane that a Plotter shows: a range and a number of tick intervals for each axis.
 *
 * A plain value. Swapped and empty ranges are possible; adjust() corrects them. The tick counts are unsigned as in
 * BasicTools::adjustLinearAxis().
 */
class PlotSettings
{
public:
    /// 0 to 10 with 5 intervals on both axes.
    PlotSettings() = default;

    /**
     * Shifts the ranges by \a dx and \a dy whole tick intervals; spans and tick counts stay.
     *
     * Positive values move the view to larger data values. With a tick count of 0 the range of that axis becomes NaN
     * or infinite: callers keep the counts at 1 or above, which adjust() guarantees.
     */
    void scroll(int dx, int dy);

    /// Widens both ranges to multiples of a tick step, see BasicTools::adjustLinearAxis().
    void adjust();

    double minX = 0.0;          ///< data units, at the left edge of the plot area
    double maxX = 10.0;         ///< data units, at the right edge
    unsigned int numXTicks = 5; ///< tick intervals along X, one less than grid lines
    double minY = 0.0;          ///< data units, at the bottom edge
    double maxY = 10.0;         ///< data units, at the top edge
    unsigned int numYTicks = 5; ///< tick intervals along Y
};
