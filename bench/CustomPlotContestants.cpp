#include "Scene.h"

#ifdef HAVE_QCUSTOMPLOT

#include "CurveDrawing.h"

#include <QPen>

#include <qcustomplot.h>

#include <memory>

namespace
{

Contestant contestant(const Scene &scene, const QString &name, bool withAxes)
{
    const auto plot = std::make_shared<QCustomPlot>();
    plot->resize(scene.size);
    plot->setNotAntialiasedElements(QCP::aeAll);
    plot->setPlottingHints(QCP::phFastPolylines | QCP::phCacheLabels);
    plot->xAxis->setRange(scene.settings.minX, scene.settings.maxX);
    plot->yAxis->setRange(scene.settings.minY, scene.settings.maxY);
    for (QCPAxis *const axis : {plot->xAxis, plot->yAxis}) {
        axis->setVisible(withAxes);
        axis->grid()->setVisible(withAxes);
    }
    for (int index = 0; index < scene.curves.size(); ++index) {
        auto *const curve = new QCPCurve(plot->xAxis, plot->yAxis);
        curve->setPen(QPen(curveColor(index), penPixels, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        curve->setAntialiased(false);
        curve->setAntialiasedScatters(false);
        if (!scene.lines) {
            curve->setLineStyle(QCPCurve::lsNone);
            curve->setScatterStyle(QCPScatterStyle(QCPScatterStyle::ssDot));
        }
        QVector<QCPCurveData> data;
        for (const QPointF &point : scene.curves.at(index)) {
            data.append(QCPCurveData(data.size(), point.x(), point.y()));
        }
        curve->data()->set(data, true);
    }
    plot->show();
    return {name, [plot] { plot->replot(QCustomPlot::rpQueuedRefresh); }};
}

} // namespace

QVector<Contestant> customPlotContestants(const Scene &scene)
{
    return {contestant(scene, QStringLiteral("QCustomPlot alone"), false),
            contestant(scene, QStringLiteral("QCustomPlot whole"), true)};
}

#else

QVector<Contestant> customPlotContestants(const Scene &)
{
    return {};
}

#endif
