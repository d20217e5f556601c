#pragma once

#include "application/Options.h"
#include "setup/Scene.h"

#include <QSize>
#include <QString>
#include <QStringList>

/// What a run of the program is made of, once the command line is understood and its files were looked at.
struct RunPlan
{
    Scene scene;               ///< with the seed that was asked for
    bool hasScene = false;     ///< a scene was asked for, or the run ends by itself; else modules only
    bool isSceneAsked = false; ///< else it is one that the run may do without
    QString scenePath;         ///< of the scene; a resource path for a shipped one
    QString openFile;          ///< absolute path of a file to open in the window; empty when there is none
    bool isTimed = false;      ///< ends by itself
    bool keepsState = false;   ///< window, palette and language are those of the last run, and are kept for the next
    double seconds = 0.0;
    QStringList plugins; ///< paths of the files, at least one; the first makes the container that is opened
    /// How many of them the run cannot do without, counted from the first: those that came unasked may be of no use.
    int requiredPlugins = 1;
    QString picture;  ///< absolute path; empty when none is wanted
    QString log;      ///< absolute path; empty when none is wanted
    QString settings; ///< absolute path of the settings file; empty where the run decides
    QSize size;       ///< of the container, widget pixels; invalid where the window decides
};

/// A plan, or one line that says why there is none, and the program's exit code for it.
struct RunPlanResult
{
    static constexpr int exitFailure = 1;
    static constexpr int exitUsage = 2;

    RunPlan plan;
    QString error;
    int exitCode = 0;
};

/// Whether a run with \a options keeps for later runs what a person chooses: not one that shows the same every time.
bool keepsState(const Options &options, bool isHeadless);

/// \param isHeadless whether there is no display, so that the run has to end by itself
RunPlanResult planRun(const Options &options, bool isHeadless);
