// The two timers: sampling reads the modules and collects points, refreshing passes the points to the plot.

#include "AxisCombo.h"
#include "ElapsedText.h"
#include "LogText.h"
#include "Plotter.h"
#include "XYPlotter.h"
#include "ui_XYPlotter.h"

#include "host/CommandHandlerInterface.h"

#include <QGraphicsPolygonItem>
#include <QPointer>
#include <QTimerEvent>

namespace
{

constexpr int trailCapPoints = 500;
constexpr int trailCutPoints = 250;
constexpr int curveCapPoints = 10000;
constexpr int curveCutPoints = 5000;
constexpr double firstPointRange = 0.5; // data units, to either side of the point
constexpr int slowestIntervalMs = 100;

/**
 * Reads both sources, X first when they are on two channels.
 *
 * \return false when a source was switched off or bound again during the exchange: some channels process events while
 *         they wait, so that a module may come or go, or the plugin may be destroyed, and the channels with them
 */
bool exchangeBoth(AxisCombo *x, AxisCombo *y)
{
    CommandHandlerInterface *const xHandler = x->handler;
    CommandHandlerInterface *const yHandler = y->handler;
    const auto isStillChosen = [=] {
        return x->isOn() && y->isOn() && x->handler == xHandler && y->handler == yHandler;
    };
    if (xHandler == yHandler) {
        xHandler->sendCommandCombos({&x->pair, &y->pair});
    } else {
        xHandler->sendCommandCombos({&x->pair});
        if (!isStillChosen()) {
            return false;
        }
        yHandler->sendCommandCombos({&y->pair});
    }
    if (!isStillChosen()) {
        return false;
    }
    // Only X's channel leaves circular mode: another tool may need it on Y's.
    xHandler->setCircularMode(false);
    return true;
}

QRectF rangeOf(const PlotSettings &settings)
{
    return {settings.minX, settings.minY, settings.maxX - settings.minX, settings.maxY - settings.minY};
}

} // namespace

void XYPlotter::setRate(int value)
{
    QSlider *const slider = ui->horizontalSliderRate;
    const int intervalMs = slowestIntervalMs - value;
    slider->setToolTip(tr("Intervall %1 ms").arg(intervalMs));
    // The id is kept after the timer was killed. Killing it again only prints a warning.
    if (sampleTimerId != 0) {
        killTimer(sampleTimerId);
    }
    if (value != 0) {
        elapsed.start();
        sampleTimerId = startTimer(intervalMs, Qt::CoarseTimer);
    } else {
        ui->labelRate->setText(tr("no sample"));
        slider->setToolTip(ui->labelRate->text());
    }
    slider->setStatusTip(slider->toolTip());
}

void XYPlotter::timerEvent(QTimerEvent *ev)
{
    const int id = ev->timerId();
    if (isVisible() && id == sampleTimerId) {
        sampleAll();
    } else if (id == refreshTimerId) {
        refreshAll();
    }
}

void XYPlotter::sampleAll()
{
    showElapsedTime();
    const QPointer<XYPlotter> self(this);
    QString fields;
    bool hasNewData = false;
    for (int index = 0; index < axisCombos.size(); ++index) {
        XYaxisCombo *const curve = axisCombos.at(index);
        if (!isSwitchedOn(index) || !curve->x->isOn() || !curve->y->isOn()) {
            continue;
        }
        const bool wasRead = exchangeBoth(curve->x, curve->y);
        if (self.isNull()) {
            return; // this plugin was destroyed during the exchange
        }
        if (!wasRead) {
            continue;
        }
        const qint32 y = curve->y->value();
        const qint32 x = curve->x->value();
        *curve->point = QPointF(x, y);
        fields += takePoint(curve, &hasNewData);
        if (curveRadioButtons.checkedId() == index) {
            extendTrail(*curve->point);
        }
    }
    if (recording && logFile != nullptr && hasNewData) {
        appendToLog(fields);
    }
}

void XYPlotter::showElapsedTime()
{
    const qint64 elapsedNs = elapsed.nsecsElapsed();
    if (elapsedNs == 0) {
        return;
    }
    ui->labelRate->setText(elapsedText(elapsedNs));
    elapsed.restart();
}

QString XYPlotter::takePoint(XYaxisCombo *curve, bool *hasNewData)
{
    const QPointF point = *curve->point;
    if (curve->points->isEmpty()) {
        // The first point of a curve sets the range and is not logged.
        startCurve(curve);
        return {};
    }
    if (curve->points->constLast() == point) {
        return recording ? LogText::repeatedPointFields() : QString();
    }
    curve->points->append(point);
    if (!recording) {
        return {};
    }
    *hasNewData = true;
    return LogText::pointFields(point);
}

void XYPlotter::startCurve(XYaxisCombo *curve)
{
    const QPointF point = *curve->point;
    plotSettings.maxX = point.x() + firstPointRange;
    plotSettings.minX = point.x() - firstPointRange;
    plotSettings.maxY = point.y() + firstPointRange;
    plotSettings.minY = point.y() - firstPointRange;
    applyPlotSettings();
    curve->points->append(point);
}

void XYPlotter::extendTrail(const QPointF &point)
{
    // Starts from the item's polygon at each sample: of all samples between two refreshes only the latest is kept.
    trail = trailItem->polygon();
    trail.append(point);
    if (trail.size() > trailCapPoints) {
        trail.remove(0, trailCutPoints);
    }
}

void XYPlotter::refreshAll()
{
    trailItem->setPolygon(trail);
    ui->graphicsView->fitInView(trailItem, Qt::IgnoreAspectRatio);
    bool isWidened = false;
    QRectF bounds;
    for (int index = 0; index < axisCombos.size(); ++index) {
        const XYaxisCombo *const curve = axisCombos.at(index);
        if (curve->points->isEmpty() || !isSwitchedOn(index)) {
            continue;
        }
        if (curve->points->size() > curveCapPoints) {
            curve->points->remove(0, curveCutPoints);
            bounds = bounds.united(QPolygonF(*curve->points).boundingRect());
        } else if (widenRange(*curve->point)) { // by the latest point alone, whatever came since the last refresh
            isWidened = true;
        }
        plotter->setCurveData(index, *curve->points);
    }
    if (bounds.width() > 0 && bounds.height() > 0) {
        // The bounds of the cut curves replace the range, including what other curves have widened.
        plotSettings.minX = bounds.left();
        plotSettings.maxX = bounds.left() + bounds.width();
        plotSettings.minY = bounds.top();
        plotSettings.maxY = bounds.top() + bounds.height();
        applyPlotSettings();
    } else if (isWidened) {
        applyPlotSettings();
    }
}

bool XYPlotter::widenRange(const QPointF &point)
{
    if (rangeOf(plotSettings).contains(point)) {
        return false;
    }
    plotSettings.minX = qMin(plotSettings.minX, point.x());
    plotSettings.maxX = qMax(plotSettings.maxX, point.x());
    plotSettings.minY = qMin(plotSettings.minY, point.y());
    plotSettings.maxY = qMax(plotSettings.maxY, point.y());
    return true;
}

void XYPlotter::applyPlotSettings()
{
    plotSettings.adjust();
    plotter->setPlotSettings(plotSettings);
}
