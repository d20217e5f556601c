#include "Scene.h"

#ifdef HAVE_QWT

#include "CurveDrawing.h"
#include "PlotGeometry.h"

#include <QImage>
#include <QPainter>
#include <QPen>

#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_scale_map.h>

#include <memory>

namespace
{

QVector<std::shared_ptr<QwtPlotCurve>> curvesOf(const Scene &scene, QwtPlotCurve::PaintAttributes attributes)
{
    QVector<std::shared_ptr<QwtPlotCurve>> curves;
    for (int index = 0; index < scene.curves.size(); ++index) {
        const auto curve = std::make_shared<QwtPlotCurve>();
        curve->setPen(QPen(curveColor(index), penPixels, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        curve->setStyle(scene.lines ? QwtPlotCurve::Lines : QwtPlotCurve::Dots);
        for (const auto attribute : {QwtPlotCurve::ClipPolygons, QwtPlotCurve::FilterPoints,
                                     QwtPlotCurve::MinimizeMemory, QwtPlotCurve::ImageBuffer}) {
            curve->setPaintAttribute(attribute, attributes.testFlag(attribute));
        }
        curve->setSamples(scene.curves.at(index));
        curves.append(curve);
    }
    return curves;
}

Contestant alone(const Scene &scene, const QString &name, QwtPlotCurve::PaintAttributes attributes)
{
    return {name, [scene, curves = curvesOf(scene, attributes)] {
                const PlotGeometry geometry(scene.size, false);
                const QRect clip = geometry.clipRectangle();
                QwtScaleMap xMap;
                xMap.setScaleInterval(scene.settings.minX, scene.settings.maxX);
                xMap.setPaintInterval(PlotGeometry::plotLeftPixels,
                                      PlotGeometry::plotLeftPixels + geometry.plotWidth());
                QwtScaleMap yMap;
                yMap.setScaleInterval(scene.settings.minY, scene.settings.maxY);
                yMap.setPaintInterval(geometry.plotBottom(), geometry.plotBottom() - geometry.plotHeight());
                QImage image(scene.size, QImage::Format_RGB32);
                image.fill(Qt::darkGray);
                QPainter painter(&image);
                painter.setClipRect(clip);
                for (const auto &curve : curves) {
                    curve->draw(&painter, xMap, yMap, clip);
                }
            }};
}

Contestant whole(const Scene &scene, const QString &name, QwtPlotCurve::PaintAttributes attributes)
{
    const auto plot = std::make_shared<QwtPlot>();
    auto *const canvas = new QwtPlotCanvas;
    canvas->setPaintAttribute(QwtPlotCanvas::BackingStore, false); // the image takes its place
    canvas->setFrameStyle(QFrame::NoFrame);
    plot->setCanvas(canvas);
    plot->setAutoReplot(false);
    plot->setAxisScale(QwtPlot::xBottom, scene.settings.minX, scene.settings.maxX);
    plot->setAxisScale(QwtPlot::yLeft, scene.settings.minY, scene.settings.maxY);
    const auto grid = std::make_shared<QwtPlotGrid>();
    grid->attach(plot.get());
    const auto curves = curvesOf(scene, attributes);
    for (const auto &curve : curves) {
        curve->attach(plot.get());
    }
    plot->resize(scene.size);
    plot->show();
    // Plots keep their image: in what the others have drawn since, it has left the caches.
    const auto image = std::make_shared<QImage>(scene.size, QImage::Format_RGB32);
    return {name, [plot, grid, curves, image] {
                plot->replot(); // fills the image, too
                plot->render(image.get());
            }};
}

} // namespace

QVector<Contestant> qwtContestants(const Scene &scene)
{
    // Which attributes pay depends on the curve: the best one of these counts.
    QVector<QwtPlotCurve::PaintAttributes> choices = {QwtPlotCurve::ClipPolygons,
                                                      QwtPlotCurve::ClipPolygons | QwtPlotCurve::FilterPoints};
    if (!scene.lines) {
        choices = {QwtPlotCurve::FilterPoints, QwtPlotCurve::ImageBuffer};
    }
    QVector<Contestant> contestants;
    for (const QwtPlotCurve::PaintAttributes attributes : qAsConst(choices)) {
        contestants.append(alone(scene, QStringLiteral("Qwt alone"), attributes));
        contestants.append(whole(scene, QStringLiteral("Qwt whole"), attributes));
    }
    return contestants;
}

#else

QVector<Contestant> qwtContestants(const Scene &)
{
    return {};
}

#endif
