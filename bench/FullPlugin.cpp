#include "FullPlugin.h"

#include "CurveSamples.h"
#include "Plotter.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QFileDialog>
#include <QTimer>
#include <QTimerEvent>

namespace
{

constexpr int refreshIntervalMs = 250;
constexpr int absentCurve = -99; // forgetting a curve that does not exist redraws and does nothing else

} // namespace

FullPlugin::FullPlugin(ContainerInterface *root, int kind, const QSize &windowSize, int pointCount)
    : ScriptedCurve(root)
{
    module->channel.clock = nullptr; // the real one, for channelMs()
    // Every tick asks for X and Y of one curve after the other.
    module->channel.answer = [this](const Command &) {
        const QPointF point = m_points.at(m_request / 2 % curveCount);
        return static_cast<qint32>(m_request++ % 2 == 0 ? point.x() : point.y());
    };
    m_points.fill(QPointF(), curveCount);
    for (int index = 1; index < curveCount; ++index) {
        chooseBoth(index);
        curveBox(index)->click();
    }
    window->resize(windowSize);
    QCoreApplication::processEvents();
    for (int index = 0; index < curveCount; ++index) {
        m_curves.append(CurveSamples::curve(kind, fullCurvePoints, index));
    }
    // The first points open the range: it only follows the latest at each refresh.
    for (const double corner : {-CurveSamples::extent, CurveSamples::extent}) {
        m_points.fill(QPointF(corner, corner));
        tick();
        refreshTick();
    }
    for (m_next = 2; m_next < pointCount;) {
        takeNext();
        tick();
    }
    refreshAndPaint();
}

void FullPlugin::takeNext()
{
    for (int index = 0; index < curveCount; ++index) {
        m_points[index] = m_curves.at(index).at(m_next % fullCurvePoints);
    }
    ++m_next;
}

void FullPlugin::tick()
{
    m_request = 0;
    sampleTick();
    module->channel.exchanges.clear();
}

void FullPlugin::tickAnew()
{
    for (QPointF &point : m_points) {
        point.rx() = point.x() > 0.0 ? point.x() - 1.0 : point.x() + 1.0;
    }
    tick();
}

void FullPlugin::refreshAndPaint()
{
    refreshTick();
    QCoreApplication::processEvents();
}

void FullPlugin::redrawAndPaint()
{
    static_cast<Plotter *>(plot())->clearCurve(absentCurve);
    QCoreApplication::processEvents();
}

void FullPlugin::setFree(bool isFree)
{
    m_isFree = isFree;
    m_sampleTimer = sampleTimerId();
}

int FullPlugin::sampleTimerId() const
{
    const auto timers = QAbstractEventDispatcher::instance()->registeredTimers(plugin);
    for (const QAbstractEventDispatcher::TimerInfo &timer : timers) {
        if (timer.interval != refreshIntervalMs) {
            return timer.timerId;
        }
    }
    return 0;
}

bool FullPlugin::eventFilter(QObject *watched, QEvent *event)
{
    if (!m_isFree || event->type() != QEvent::Timer) {
        return ScriptedCurve::eventFilter(watched, event);
    }
    if (static_cast<QTimerEvent *>(event)->timerId() == m_sampleTimer) {
        onSample();
        takeNext();
        m_request = 0;
        module->channel.exchanges.clear();
    }
    return false;
}

double FullPlugin::channelMs() const
{
    return static_cast<double>(module->channel.statistics().totalDurationNs) / 1e6;
}

bool FullPlugin::startLogOf(const QString &path) const
{
    QTimer::singleShot(0, this, [&] {
        auto *const dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        if (dialog != nullptr) {
            dialog->selectFile(path);
            static_cast<QDialog *>(dialog)->done(QDialog::Accepted);
        }
    });
    find<QCheckBox>("cbLog")->click();
    return QFile::exists(path);
}
