#include "PlotGeometry.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>

namespace
{

constexpr int minimumExtentPixels = 100;
constexpr int plotMarginsPixels = 101; // both margins of the plot area, in either direction
constexpr int bottomMarginPixels = 41;
constexpr int clipInsetPixels = 2; // keeps curves off the frame
constexpr int clipMarginsPixels = 104;
// The press area has the same margin on all sides and extends above the plot area, so that a band can start above the
// highest curve. Zooming is relative to it.
constexpr int pressOriginPixels = 50;
constexpr int pressMarginsPixels = 100;
constexpr double reachPixels = 1.0e9; // leaves room for offsets in integer arithmetic

double usableSpan(double minimum, double maximum)
{
    const double span = maximum - minimum;
    return span == 0.0 ? 1.0 : span;
}

} // namespace

int truncated(double value)
{
    if (std::isnan(value)) {
        return 0;
    }
    return static_cast<int>(qBound(-reachPixels, value, reachPixels));
}

PointMapping::PointMapping(const PlotSettings &settings, double plotWidth, double plotBottom, double plotHeight)
    : m_minX(settings.minX)
    , m_minY(settings.minY)
    , m_spanX(usableSpan(settings.minX, settings.maxX))
    , m_spanY(usableSpan(settings.minY, settings.maxY))
    , m_plotWidth(plotWidth)
    , m_plotBottom(plotBottom)
    , m_plotHeight(plotHeight)
{
}

PlotGeometry::PlotGeometry(const QSize &widgetSize, bool square) : m_size(widgetSize), m_square(square) {}

bool PlotGeometry::isDrawable() const
{
    return width() > minimumExtentPixels && height() > minimumExtentPixels;
}

int PlotGeometry::width() const
{
    return m_size.width();
}

int PlotGeometry::height() const
{
    return m_size.height();
}

double PlotGeometry::plotWidth() const
{
    return m_square ? plotHeight() : width() - plotMarginsPixels;
}

double PlotGeometry::plotHeight() const
{
    return height() - plotMarginsPixels;
}

int PlotGeometry::plotBottom() const
{
    return height() - bottomMarginPixels;
}

QRect PlotGeometry::clipRectangle() const
{
    // QPainter would normalise a rectangle of negative size instead of clipping everything.
    return {plotLeftPixels + clipInsetPixels, plotTopPixels + clipInsetPixels, std::max(0, width() - clipMarginsPixels),
            std::max(0, height() - clipMarginsPixels)};
}

QRect PlotGeometry::pressArea() const
{
    return {pressOriginPixels, pressOriginPixels, width() - pressMarginsPixels, height() - pressMarginsPixels};
}

PointMapping PlotGeometry::mapping(const PlotSettings &settings) const
{
    return {settings, plotWidth(), static_cast<double>(plotBottom()), plotHeight()};
}

PlotSettings PlotGeometry::zoomed(const PlotSettings &previous, const QRect &band) const
{
    const QRect area = band.translated(-pressOriginPixels, -pressOriginPixels);
    const double dx = (previous.maxX - previous.minX) / (width() - pressMarginsPixels);
    const double dy = (previous.maxY - previous.minY) / (height() - pressMarginsPixels);

    PlotSettings settings;
    settings.minX = previous.minX + dx * area.left();
    settings.maxX = previous.minX + dx * area.right();
    settings.minY = previous.maxY - dy * area.bottom();
    settings.maxY = previous.maxY - dy * area.top();
    return settings;
}
