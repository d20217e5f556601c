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

/// Key of the module that all curves of the container share on a side; empty when none has a source there.
QString moduleOf(const SceneContainer &container, SceneSource SceneCurve::*side)
{
    for (const SceneCurve &curve : container.curves) {
        if ((curve.*side).isChosen()) {
            return (curve.*side).module;
        }
    }
    return {};
}

/// How many curves are sampled: with a module on both sides those that are on, even if they have no values of their own.
int sampledCurvesOf(const SceneContainer &container)
{
    const bool hasModules =
        !moduleOf(container, &SceneCurve::x).isEmpty() && !moduleOf(container, &SceneCurve::y).isEmpty();
    const auto isOn = [](const SceneCurve &curve) { return curve.isOn; };
    return hasModules ? int(std::count_if(container.curves.cbegin(), container.curves.cend(), isOn)) : 0;
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
        count += sampledCurvesOf(container);
    }
    return count;
}

int Scene::exchangesPerTick() const
{
    int exchanges = 0;
    const QList<SceneContainer> all = containers();
    for (const SceneContainer &container : all) {
        const bool isOneChannel = moduleOf(container, &SceneCurve::x) == moduleOf(container, &SceneCurve::y);
        exchanges += sampledCurvesOf(container) * (isOneChannel ? 1 : 2); // which carries both requests at once
    }
    return exchanges;
}

int Scene::stepsPerExchange() const
{
    return qMax(1, qRound(double(PlotterWindow::samplingIntervalMs) / qMax(1, exchangesPerTick())));
}
