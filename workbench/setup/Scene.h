#pragma once

#include "modules/ModuleSettings.h"

#include <QByteArray>
#include <QList>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QtGlobal>

/// A value of a module, as a person finds it on a selector page.
struct SceneSource
{
    QString module;        ///< key of the module
    QString motor;         ///< "Axis 0", "Register" ...; empty where there is no choice
    QString value;         ///< text of the row's last column; empty when there is no source
    bool isSigned = false; ///< whether the row's box for signed values gets ticked

    bool isChosen() const
    {
        return !value.isEmpty();
    }
};

/// One curve: a value for X and one for Y.
struct SceneCurve
{
    SceneSource x;
    SceneSource y;
    bool isOn = true; ///< whether its numbered box is ticked
};

/// Where the window of a container is, within the workspace.
struct WindowPlace
{
    enum class State
    {
        Maximised,
        Normal,
        Minimised,
        Closed
    };

    static constexpr int maximumSide = 16384; ///< of any window, widget pixels

    State state = State::Maximised;
    QRect geometry; ///< of the window when it is neither maximised nor minimised; invalid where the workspace decides
};

/**
 * What one container shows.
 *
 * All X values come from one module, and so do all Y values, because choosing a module for one curve binds it to the
 * same side of all the others.
 */
struct SceneContainer
{
    static constexpr int maximumCurves = 4;

    QString plugin;           ///< class name of the plugin; empty: the first that is loaded
    QList<SceneCurve> curves; ///< up to maximumCurves; without any the boxes stay as they are
    int selectedCurve = 0;    ///< whose tables are shown, from 0
    bool showsLines = true;   ///< lines between the points
    bool isSquare = false;    ///< the plot is as wide as it is high
    bool showsAll = false;    ///< curves that are not recorded are shown too
    WindowPlace place;
};

/// The main window around the containers.
struct WindowLayout
{
    QSize size; ///< without the frame of the desktop, widget pixels; invalid: as the window is
    bool isMaximised = false;
    QByteArray docks; ///< as WindowState::docks() gives it; empty: as they are
};

/**
 * What there is in the workbench at one time: modules and how they are set, containers and what they show, and the
 * window around them. Plain data. A set-up is a scene in a file; docs/setups.md describes its format.
 *
 * The first container's choices are members of the scene itself.
 */
struct Scene : SceneContainer
{
    static constexpr int maximumModules = 100;
    static constexpr int maximumContainers = 16;

    QString title;
    quint32 seed = 1;
    QList<ModuleSettings> modules;
    QStringList takenOut; ///< keys of the modules that are not plugged in
    QList<SceneContainer> furtherContainers;
    int frontContainer = 0; ///< whose window is in front, from 0
    WindowLayout layout;

    /// All containers, in the order of their making; at least one.
    QList<SceneContainer> containers() const;

    /// The title in the language of the program, if it is that of a shipped scene.
    QString shownTitle() const;

    /// Curves of all containers that are read at each sampling tick.
    int sampledCurves() const;

    /// Exchanges with modules that one sampling tick takes.
    int exchangesPerTick() const;

    /// Simulated milliseconds per exchange that make a tick last about as long as it does in real time; at least 1.
    int stepsPerExchange() const;
};
