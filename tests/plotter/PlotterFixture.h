#pragma once

#include "GuardedTest.h"
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

inline QPalette lookOf(const QColor &shadow, const QColor &dark, const QColor &light)
{
    QPalette palette;
    palette.setColor(QPalette::Shadow, shadow);
    palette.setColor(QPalette::Dark, dark);
    palette.setColor(QPalette::Light, light);
    return palette;
}

/// The plot's picture with black in place of the controls, which end above row 38.
inline QImage withoutControls(QImage image)
{
    for (int y = 0; y < qMin(38, image.height()); ++y) {
        std::memset(image.scanLine(y), 0, static_cast<size_t>(image.bytesPerLine()));
    }
    return image;
}

inline void mouse(Plotter *plotter, QEvent::Type type, const QPoint &position, Qt::MouseButton button = Qt::LeftButton)
{
    QMouseEvent event(type, position, type == QEvent::MouseMove ? Qt::NoButton : button, button, Qt::NoModifier);
    QApplication::sendEvent(plotter, &event);
    REQUIRE(event.isAccepted());
}

inline void drag(Plotter *plotter, const QPoint &from, const QPoint &to)
{
    mouse(plotter, QEvent::MouseButtonPress, from);
    mouse(plotter, QEvent::MouseMove, to);
    mouse(plotter, QEvent::MouseButtonRelease, to);
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
        plotter.setPalette(lookOf(shadow, QColor(60, 60, 60), Qt::white));
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

    QImage image()
    {
        return withoutControls(plotter.grab().toImage());
    }

    const QColor shadow = QColor(10, 20, 30);
    Plotter plotter;
    QCheckBox *lineMode = nullptr;
    QCheckBox *aspect = nullptr;
};
