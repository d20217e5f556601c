#pragma once

/**
 * The part of the data plane that a Plotter shows: a range and a number of tick intervals for each axis.
 *
 * A plain value. Nothing in it forbids swapped or empty ranges; adjust() puts them right. The tick counts are unsigned
 * because the host's axis rounding takes them so.
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

    /// Widens both ranges to whole multiples of a nice tick step, see BasicTools::adjustLinearAxis().
    void adjust();

    double minX = 0.0;          ///< data units, at the left edge of the plot area
    double maxX = 10.0;         ///< data units, at the right edge
    unsigned int numXTicks = 5; ///< tick intervals along X: there is one grid line more than that
    double minY = 0.0;          ///< data units, at the bottom edge
    double maxY = 10.0;         ///< data units, at the top edge
    unsigned int numYTicks = 5; ///< tick intervals along Y
};
