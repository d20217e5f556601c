#pragma once

#include "PlotSettings.h"

#include <QPointF>
#include <QRect>
#include <QSize>

/// \a value truncated toward zero to a whole pixel. NaN gives 0; values beyond +-1e9 are clamped.
int truncated(double value);

/// Maps data units to widget pixels, for a PlotGeometry and PlotSettings.
class PointMapping
{
public:
    PointMapping(const PlotSettings &settings, double plotWidth, double plotBottom, double plotHeight);

    /// The position of a data point in widget pixels, unrounded; may be outside the widget, infinite or NaN.
    /// Inline because every redraw maps every point.
    inline QPointF map(const QPointF &dataPoint) const;

private:
    double m_minX;
    double m_minY;
    double m_spanX; // never 0
    double m_spanY; // never 0
    double m_plotWidth;
    double m_plotBottom;
    double m_plotHeight;
};

/**
 * The positions in a plot widget of a given size, in widget pixels.
 *
 * A plain value. Drawing and zooming use different areas, see zoomed().
 */
class PlotGeometry
{
public:
    static constexpr int plotLeftPixels = 50;
    static constexpr int plotTopPixels = 60;

    /// \a square makes the plot area as wide as it is high.
    PlotGeometry(const QSize &widgetSize, bool square);

    /// A widget of 100 pixels or less in either direction has no room for a plot.
    bool isDrawable() const;

    int width() const;  ///< Of the widget.
    int height() const; ///< Of the widget.

    double plotWidth() const;
    double plotHeight() const;
    int plotBottom() const; ///< y of the lower edge of the plot area.

    /// The clip rectangle of curves. Not reduced for a square plot area: curves right of the square stay visible.
    QRect clipRectangle() const;

    /// Where a rubber band may be started.
    QRect pressArea() const;

    PointMapping mapping(const PlotSettings &settings) const;

    /**
     * The settings for the part of \a previous within a rubber band \a band (normalised); not adjusted, default ticks.
     *
     * Relative to the press area instead of the plot area: the range differs from the band as drawn by a few pixels,
     * about ten vertically.
     */
    PlotSettings zoomed(const PlotSettings &previous, const QRect &band) const;

private:
    QSize m_size;
    bool m_square;
};

QPointF PointMapping::map(const QPointF &dataPoint) const
{
    return {PlotGeometry::plotLeftPixels + (dataPoint.x() - m_minX) * m_plotWidth / m_spanX,
            m_plotBottom - (dataPoint.y() - m_minY) * m_plotHeight / m_spanY};
}
