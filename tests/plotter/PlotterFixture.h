#pragma once

#include "Plotter.h"

#include <QCheckBox>
#include <QImage>
#include <QtMath>

#include <cstring>

inline PlotSettings ranges(double minX, double maxX, double minY, double maxY, unsigned int intervals = 5)
{
    PlotSettings settings;
    settings.minX = minX;
    settings.maxX = maxX;
    settings.minY = minY;
    settings.maxY = maxY;
    settings.numXTicks = settings.numYTicks = intervals;
    return settings;
}

/// A plotter that can be brought to a screen of another pixel ratio.
class MovedPlotter : public Plotter
{
public:
    using Plotter::Plotter;

    qreal ratio = 1.0;

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmDevicePixelRatio:
            return qCeil(ratio);
        case PdmDevicePixelRatioScaled:
            return qRound(ratio * devicePixelRatioFScale());
        default:
            return Plotter::metric(metric);
        }
    }
};

/// A plotter of 600 x 400 pixels, one pixel for each data unit, in colours that are easy to tell apart.
struct PlotterFixture
{
    explicit PlotterFixture(int curveCount = 4) : plotter(curveCount)
    {
        QPalette palette;
        palette.setColor(QPalette::Shadow, shadow);
        palette.setColor(QPalette::Light, Qt::white);
        palette.setColor(QPalette::Dark, QColor(60, 60, 60));
        plotter.setPalette(palette);
        plotter.resize(600, 400);
        plotter.show(); // a hidden widget would redraw at every grab
        plotter.setPlotSettings(ranges(0.0, 499.0, 0.0, 299.0, 1));
        lineMode = plotter.findChildren<QCheckBox *>().value(0);
        aspect = plotter.findChildren<QCheckBox *>().value(1);
    }

    /// The data point that is shown at a pixel of the widget.
    static QPointF at(int x, int y)
    {
        return {x - 50.0, 359.0 - y};
    }

    /// What is shown below the controls, which begins at (0, 38).
    QImage image()
    {
        QImage image = plotter.grab().toImage();
        for (int y = 0; y < qMin(38, image.height()); ++y) {
            std::memset(image.scanLine(y), 0, static_cast<size_t>(image.bytesPerLine()));
        }
        return image;
    }

    const QColor shadow = QColor(10, 20, 30);
    Plotter plotter;
    QCheckBox *lineMode = nullptr;
    QCheckBox *aspect = nullptr;
};
