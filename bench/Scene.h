#pragma once

#include "PlotSettings.h"

#include <QPolygonF>
#include <QSize>
#include <QString>
#include <QVector>

#include <functional>

/// What all contestants draw.
struct Scene
{
    Scene(int kind, int pointCount, int curveCount, const QSize &size, bool lines, double zoom);

    QPolygonF mapped(int curve) const; ///< widget pixels

    QVector<QVector<QPointF>> curves; // data units
    QSize size;
    bool lines;
    PlotSettings settings;
};

/// One way to draw a scene.
struct Contestant
{
    QString name;
    std::function<void()> draw;
};

constexpr double penPixels = 2.0;

// Each makes its contestants ready to draw. "alone" stands for curves without markers on an image that is filled first,
// "whole" for the redraw of a whole plot with axes and text.
QVector<Contestant> floorContestants(const Scene &scene);
QVector<Contestant> plainContestants(const Scene &scene); ///< only alone
QVector<Contestant> productContestants(const Scene &scene);
QVector<Contestant> qwtContestants(const Scene &scene);        ///< empty when it was not built
QVector<Contestant> customPlotContestants(const Scene &scene); ///< empty when it was not built

/// The same curves by the product's widget; its image is rebuilt by each call.
Contestant redrawOfProduct(const Scene &scene);
