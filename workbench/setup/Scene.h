#pragma once

#include "modules/ModuleSettings.h"

#include <QList>
#include <QString>
#include <QtGlobal>

/// A value of a module, as a person finds it on a selector page.
struct SceneSource
{
    QString module;        ///< key of the module
    QString motor;         ///< "Axis 0", "Register" ...; empty where there is no choice
    QString value;         ///< text of the row's last column
    bool isSigned = false; ///< whether the row's box for signed values gets ticked
};

/// One curve: a value for X and one for Y.
struct SceneCurve
{
    SceneSource x;
    SceneSource y;
};

/**
 * A set-up of the workbench, as a scene file describes it: simulated modules, their motions, and the sources of the
 * curves. Plain data, see readScene(); docs/scenes.md describes the format.
 *
 * All X values come from one module, and so do all Y values, because choosing a module for one curve binds it to the
 * same side of all the others.
 */
struct Scene
{
    static constexpr int maximumCurves = 4;

    QString title;
    quint32 seed = 1;
    QList<ModuleSettings> modules;
    QList<SceneCurve> curves; ///< up to maximumCurves
    bool showsLines = true;   ///< lines between the points
    bool isSquare = false;    ///< the plot is as wide as it is high
    bool showsAll = false;    ///< curves that are not recorded are shown too

    /// The title in the language of the program, if it is that of a shipped scene.
    QString shownTitle() const;

    /// Exchanges with modules that one sampling tick takes.
    int exchangesPerTick() const;

    /// Simulated milliseconds per exchange that make a tick last about as long as it does in real time; at least 1.
    int stepsPerExchange() const;
};
