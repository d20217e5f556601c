#pragma once

#include "application/RunPlan.h"
#include "window/MainWindow.h"
#include "window/Workbench.h"

#include <QTemporaryDir>

#include <memory>

class SelfTest;
class Terminal;

/**
 * One run of the workbench as it was planned: loads the plugins, opens the first one's container, makes the scene's
 * choices there, and then serves a person, runs for a time or tests itself.
 *
 * Chooses the settings file of the whole program. Needs the application object. GUI thread.
 */
class WorkbenchRun
{
public:
    /**
     * \param terminal gets results and errors
     * \param selfTest gets the checks of a run that tests itself; null for any other
     * All three are not owned and have to outlive this.
     */
    WorkbenchRun(const RunPlan &plan, const Terminal &terminal, SelfTest *selfTest = nullptr);

    /// Runs from beginning to end, once; returns 0, or 1 after something has failed and was printed.
    int exec();

private:
    Q_DISABLE_COPY(WorkbenchRun)

    bool loadPlugins();
    bool addContainers();
    /// Opens the container, sizes the plot window and makes the scene's choices; returns what went wrong.
    QString setUp();
    int serve();
    int runTimed();
    int runRecorded();
    void openPlot();
    int testItself();
    void printTroubles() const;
    int fail(const QString &problem) const;

    const RunPlan &m_plan;
    const Terminal &m_terminal;
    SelfTest *const m_selfTest;
    const QTemporaryDir m_temporaryFolder; // for settings that are not shared with other runs
    Workbench m_workbench;
    std::unique_ptr<MainWindow> m_window;      // made when all plugins are loaded
    ContainerInterface *m_container = nullptr; // the one that the scene is for; owned by the workbench
};
