#include "PlotSettings.h"

#include "host/BasicTools.h"

void PlotSettings::scroll(int dx, int dy)
{
    const double stepX = (maxX - minX) / numXTicks;
    minX += stepX * dx;
    maxX += stepX * dx;

    const double stepY = (maxY - minY) / numYTicks;
    minY += stepY * dy;
    maxY += stepY * dy;
}

void PlotSettings::adjust()
{
    BasicTools::adjustLinearAxis(minX, maxX, numXTicks);
    BasicTools::adjustLinearAxis(minY, maxY, numYTicks);
}
