#include "Scene.h"

#include "CoverageMask.h"
#include "CurveDrawing.h"
#include "CurveRaster.h"
#include "CurveSamples.h"
#include "PlotGeometry.h"
#include "Plotter.h"

#include <QCheckBox>
#include <QImage>
#include <QPainter>

#include <memory>

namespace
{

constexpr int unknownCurve = -99; // forgetting a curve that does not exist redraws and does nothing else

std::shared_ptr<Plotter> plotterFor(const Scene &scene)
{
    auto plotter = std::make_shared<Plotter>(4);
    plotter->resize(scene.size);
    plotter->show();
    plotter->findChildren<QCheckBox *>().first()->setChecked(scene.lines);
    plotter->showAllDataCheck->setChecked(true);
    plotter->setPlotSettings(scene.settings);
    return plotter;
}

QImage filledImage(const Scene &scene)
{
    QImage image(scene.size, QImage::Format_RGB32);
    image.fill(Qt::darkGray);
    return image;
}

} // namespace

Scene::Scene(int kind, int pointCount, int curveCount, const QSize &sceneSize, bool isLines, double zoom)
    : size(sceneSize), lines(isLines)
{
    for (int index = 0; index < curveCount; ++index) {
        curves.append(CurveSamples::curve(kind, pointCount, index));
    }
    // A zoomed view lies around a point of the first curve.
    const QPointF centre = zoom == 1.0 ? QPointF() : curves.first().at(pointCount / 2);
    const double range = CurveSamples::extent / zoom;
    settings.minX = centre.x() - range;
    settings.maxX = centre.x() + range;
    settings.minY = centre.y() - range;
    settings.maxY = centre.y() + range;
    settings.numXTicks = settings.numYTicks = 10;
}

QPolygonF Scene::mapped(int curve) const
{
    const PointMapping mapping = PlotGeometry(size, false).mapping(settings);
    QPolygonF polyline;
    polyline.reserve(curves.at(curve).size());
    for (const QPointF &point : curves.at(curve)) {
        polyline.append(mapping.map(point));
    }
    return polyline;
}

QVector<Contestant> floorContestants(const Scene &scene)
{
    return {{QStringLiteral("floor"), [scene] {
                 filledImage(scene);
                 for (int curve = 0; curve < scene.curves.size(); ++curve) {
                     scene.mapped(curve);
                 }
             }}};
}

QVector<Contestant> plainContestants(const Scene &scene)
{
    const auto drawAlone = [scene] {
        QImage image = filledImage(scene);
        QPainter painter(&image);
        painter.setClipRect(PlotGeometry(scene.size, false).clipRectangle());
        for (int curve = 0; curve < scene.curves.size(); ++curve) {
            CurveSamples::drawPlain(&painter, scene.mapped(curve), penPixels, curveColor(curve), scene.lines);
        }
    };
    return {{QStringLiteral("plain alone"), drawAlone}};
}

Contestant redrawOfProduct(const Scene &scene)
{
    const std::shared_ptr<Plotter> plotter = plotterFor(scene);
    for (int curve = 0; curve < scene.curves.size(); ++curve) {
        plotter->setCurveData(curve, scene.curves.at(curve));
    }
    // The image is rebuilt when it is painted; one pixel is enough.
    const auto pixel = std::make_shared<QImage>(1, 1, QImage::Format_RGB32);
    return {QStringLiteral("ours whole"), [plotter, pixel] {
                plotter->clearCurve(unknownCurve);
                plotter->render(pixel.get(), QPoint(), QRegion(0, 0, 1, 1), QWidget::RenderFlags());
            }};
}

QVector<Contestant> productContestants(const Scene &scene)
{
    const auto mask = std::make_shared<CoverageMask>();
    const auto drawAlone = [scene, mask] {
        QImage image = filledImage(scene);
        const RasterPen pen = {&image, PlotGeometry(scene.size, false).clipRectangle(), penPixels};
        for (int curve = 0; curve < scene.curves.size(); ++curve) {
            if (scene.lines) {
                CurveRaster::drawPolyline(pen, scene.mapped(curve), curveColor(curve), mask.get());
            } else {
                CurveRaster::drawDots(pen, scene.mapped(curve), curveColor(curve));
            }
        }
    };
    return {{QStringLiteral("ours alone"), drawAlone}, redrawOfProduct(scene)};
}
