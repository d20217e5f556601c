#include "setup/Scene.h"

#include "PlotterWindow.h"

#include <QCoreApplication>

#include <algorithm>

namespace
{

// The titles stand in the scene files; here they are marked for translation.
[[maybe_unused]] constexpr const char *shippedTitles[] = {
    QT_TRANSLATE_NOOP("Scene", "A circle drawn by two axes"),
    QT_TRANSLATE_NOOP("Scene", "Four curves at once"),
    QT_TRANSLATE_NOOP("Scene", "Play in a gear: motor position against encoder"),
    QT_TRANSLATE_NOOP("Scene", "Velocity over position, the velocity from a register field"),
    QT_TRANSLATE_NOOP("Scene", "One module of each kind"),
    QT_TRANSLATE_NOOP("Scene", "Two modules: a stepper axis against a servo axis"),
};

bool isSampled(const SceneCurve &curve)
{
    return curve.isOn && curve.x.isChosen() && curve.y.isChosen();
}

} // namespace

QList<SceneContainer> Scene::containers() const
{
    return QList<SceneContainer>{*this} + furtherContainers;
}

QString Scene::shownTitle() const
{
    return QCoreApplication::translate("Scene", title.toUtf8().constData());
}

int Scene::sampledCurves() const
{
    int count = 0;
    const QList<SceneContainer> all = containers();
    for (const SceneContainer &container : all) {
        count += int(std::count_if(container.curves.cbegin(), container.curves.cend(), isSampled));
    }
    return count;
}

int Scene::exchangesPerTick() const
{
    int exchanges = 0;
    const QList<SceneContainer> all = containers();
    for (const SceneContainer &container : all) {
        for (const SceneCurve &curve : container.curves) {
            if (isSampled(curve)) {
                exchanges += curve.x.module == curve.y.module ? 1 : 2; // one channel carries both requests at once
            }
        }
    }
    return exchanges;
}

int Scene::stepsPerExchange() const
{
    return qMax(1, qRound(double(PlotterWindow::samplingIntervalMs) / qMax(1, exchangesPerTick())));
}
