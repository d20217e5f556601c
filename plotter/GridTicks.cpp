#include "GridTicks.h"

#include "PlotGeometry.h"

#include "host/BasicTools.h"

#include <algorithm>
#include <cmath>

namespace
{

// Only integers are labelled: labels have no decimals, and would show other values wrong.
QString tickLabel(double value)
{
    if (!std::isfinite(value) || std::round(value) != value) {
        return QString();
    }
    return BasicTools::intInsertDot(value, 0);
}

} // namespace

QVector<GridTick> gridTicks(double minimum, double maximum, unsigned int intervals, double origin, double extent)
{
    QVector<GridTick> ticks;
    if (intervals == 0) {
        return ticks;
    }

    const quint64 pixels = static_cast<quint64>(std::max(1, std::abs(truncated(extent))));
    const quint64 stride = (intervals + pixels - 1) / pixels;
    for (quint64 index = 0; index <= intervals; index += stride) {
        const double step = static_cast<double>(index);
        const double value = step * (maximum - minimum) / intervals + minimum;
        ticks.append({truncated(origin + extent * step / intervals), tickLabel(value)});
    }
    return ticks;
}
