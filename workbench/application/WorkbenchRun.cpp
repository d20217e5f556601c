#include "application/WorkbenchRun.h"

#include "PlotterWindow.h"
#include "application/EndSignals.h"
#include "application/Language.h"
#include "application/RecordingDriver.h"
#include "application/SelfTest.h"
#include "application/Terminal.h"
#include "application/TimedRun.h"
#include "logging/Recordings.h"
#include "modules/modbus/ModbusModule.h"
#include "setup/SceneRunner.h"
#include "window/FileMenu.h"
#include "window/SceneExchange.h"
#include "window/WindowState.h"

#include "host/AppSettings.h"
#include "host/ContainerInterface.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSettings>
#include <QTimer>

namespace
{

constexpr int exitFailure = RunPlanResult::exitFailure;

struct WorkbenchRunText
{
    Q_DECLARE_TR_FUNCTIONS(WorkbenchRun)
};

/// A timed run gives the same values whatever the computer's speed; where a person works, motors keep real time.
SimulationClock::Drive driveOf(const RunPlan &plan)
{
    return plan.isTimed ? SimulationClock::Drive::Exchanges : SimulationClock::Drive::WallClock;
}

/// Whether the set-up says which containers there are, and is carried out as a whole.
bool isWhole(const Scene &scene)
{
    return !scene.plugin.isEmpty() || !scene.furtherContainers.isEmpty();
}

} // namespace

WorkbenchRun::WorkbenchRun(const RunPlan &plan, const Terminal &terminal, SelfTest *selfTest)
    : m_plan(plan)
    , m_terminal(terminal)
    , m_selfTest(selfTest)
    , m_workbench(driveOf(plan), plan.scene.stepsPerExchange())
{
}

int WorkbenchRun::exec()
{
    // A scene has to show the same whatever was chosen in earlier runs, so remembered choices stay outside.
    if (m_plan.hasScene) {
        AppSettings::setStoreFile(m_temporaryFolder.filePath(QStringLiteral("settings.ini")));
        // Qt's file dialog remembers folders in a file of its own.
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_temporaryFolder.path());
    }
    if (!m_plan.settings.isEmpty()) {
        AppSettings::setStoreFile(m_plan.settings);
    }
    if (!loadPlugins()) {
        return exitFailure;
    }
    quint32 seed = m_plan.scene.seed;
    for (const ModuleSettings &module : m_plan.scene.modules) {
        const bool isPluggedIn = !m_plan.scene.takenOut.contains(module.key);
        const QString problem = m_workbench.modules().add(module, seed++, isPluggedIn);
        if (!problem.isEmpty()) {
            return fail(problem);
        }
    }
    m_window = std::make_unique<MainWindow>(&m_workbench);
    if (!addContainers()) {
        return exitFailure;
    }
    m_container = m_workbench.containers().constFirst();
    if (m_plan.keepsState) {
        new WindowState(m_window.get());
    }
    m_window->show();
    const QString problem = setUp();
    if (!problem.isEmpty()) {
        return fail(problem);
    }
    if (m_plan.hasScene) {
        const bool isFile = QFileInfo(m_plan.scenePath).isFile() && !m_plan.scenePath.startsWith(QLatin1Char(':'));
        m_window->fileMenu()->setDocument(m_plan.scene,
                                          isFile ? QFileInfo(m_plan.scenePath).fileName() : m_plan.scene.shownTitle(),
                                          isFile ? m_plan.scenePath : QString());
    } else {
        m_window->showHint();
    }
    if (m_selfTest != nullptr) {
        return testItself();
    }
    if (!m_plan.isTimed) {
        return serve();
    }
    const int exitCode = runTimed();
    printTroubles();
    return exitCode;
}

/// A plugin that the run cannot do without ends it; the others are only named.
bool WorkbenchRun::loadPlugins()
{
    int required = m_plan.requiredPlugins;
    for (const QString &file : m_plan.plugins) {
        Language::useForPlugin(file);
        const QString problem = m_workbench.loadPlugin(file);
        if (m_selfTest != nullptr) {
            m_selfTest->check(problem.isEmpty(),
                              WorkbenchRunText::tr("plugin: %1").arg(problem.isEmpty() ? file : problem));
        } else if (!problem.isEmpty()) {
            m_terminal.printError(problem);
        }
        if (required-- > 0 && !problem.isEmpty()) {
            return false;
        }
    }
    return true;
}

/// Makes one container of each plugin, the same way.
bool WorkbenchRun::addContainers()
{
    for (int plugin = 0; plugin < m_workbench.pluginCount(); ++plugin) {
        if (m_window->addContainer(plugin) != nullptr) {
            continue;
        }
        const QString problem =
            WorkbenchRunText::tr("%1: this plugin makes no container").arg(m_workbench.pluginPath(plugin));
        if (m_selfTest != nullptr) {
            m_selfTest->check(false, WorkbenchRunText::tr("plugin: %1").arg(problem));
        } else {
            m_terminal.printError(problem);
        }
        if (plugin < m_plan.requiredPlugins) {
            return false;
        }
    }
    return true;
}

QString WorkbenchRun::setUp()
{
    if (isWhole(m_plan.scene)) {
        Scene scene = m_plan.scene;
        if (m_plan.isTimed) {
            scene.layout = {};
        }
        const QStringList errors = SceneExchange(&m_workbench, m_window.get()).setUp(scene);
        if (!errors.isEmpty()) {
            return errors.constFirst();
        }
        m_container = m_workbench.containers().constFirst();
        m_window->openContainer(m_container);
    } else {
        openPlot();
    }
    if (m_plan.size.isValid()) {
        const QSize actualSize = m_window->resizeContainer(m_container, m_plan.size);
        if (actualSize != m_plan.size) {
            return WorkbenchRunText::tr("the plot window cannot be %1x%2, it needs at least %3x%4")
                .arg(m_plan.size.width())
                .arg(m_plan.size.height())
                .arg(actualSize.width())
                .arg(actualSize.height());
        }
    }
    const bool isWithoutPlot = !m_plan.isSceneAsked && !PlotterWindow::isPlot(m_container);
    if (isWhole(m_plan.scene) || isWithoutPlot) {
        return {};
    }
    return SceneRunner(m_container).apply(m_plan.scene);
}

/// Opens the first container, and others until one of them can show the curves of the scene, if it has any.
void WorkbenchRun::openPlot()
{
    const QList<ContainerInterface *> containers = m_workbench.containers();
    for (ContainerInterface *const container : containers) {
        m_window->openContainer(container);
        if (m_plan.scene.curves.isEmpty() || PlotterWindow::isPlot(container)) {
            m_container = container;
            return;
        }
    }
    m_window->openContainer(m_container);
}

/// Until the person closes the window, or a signal does.
int WorkbenchRun::serve()
{
    if (const EndSignals *const endSignals = EndSignals::instance()) {
        QObject::connect(endSignals, &EndSignals::received, m_window.get(), [this] {
            m_window->fileMenu()->endSession();
            m_window->close();
            QCoreApplication::quit(); // also when a dialog or a window of a container's own is still open
        });
    }
    m_window->offerAppearance(Language::codes());
    m_window->fileMenu()->beginSession();
    if (!m_plan.openFile.isEmpty()) {
        // From the event loop, for it may have to ask or to report.
        QTimer::singleShot(0, m_window.get(), [this] { m_window->fileMenu()->open(m_plan.openFile); });
    }
    return QCoreApplication::exec();
}

int WorkbenchRun::runTimed()
{
    if (!m_plan.log.isEmpty()) {
        const int exitCode = runRecorded();
        if (exitCode != 0 || m_plan.picture.isEmpty()) {
            return exitCode;
        }
    } else {
        TimedRun timedRun(m_container, m_plan.picture);
        timedRun.start(m_plan.seconds);
        QCoreApplication::exec();
        if (!timedRun.error().isEmpty()) {
            return fail(timedRun.error());
        }
    }
    if (m_selfTest == nullptr) {
        m_terminal.print(WorkbenchRunText::tr("Answers read: %1; the picture is %2")
                             .arg(m_workbench.modules().answeredRequests())
                             .arg(m_plan.picture));
    }
    return 0;
}

/// Has the container's curves recorded for the time of the run, which begins with the recording.
int WorkbenchRun::runRecorded()
{
    RecordingWatch *const watch = m_window->recordings()->watch(m_container);
    TimedRun timedRun(m_container, m_plan.picture);
    RecordingDriver driver(m_container, watch, m_plan.log, [this] {
        // One sampling tick reads both values of all curves, and gives every curve its first point.
        return m_workbench.modules().answeredRequests() >= 2U * quint64(m_plan.scene.sampledCurves());
    });
    QObject::connect(&driver, &RecordingDriver::begun, &timedRun, [&] { timedRun.start(m_plan.seconds); });
    QObject::connect(&driver, &RecordingDriver::failed, &timedRun, [] { QCoreApplication::exit(exitFailure); });
    QObject::connect(&timedRun, &TimedRun::ending, &driver, [&] {
        m_window->recordings()->poll(); // counts what was announced until now
        driver.stop();
    });
    QCoreApplication::exec();
    for (const QString &error : {driver.error(), timedRun.error()}) {
        if (!error.isEmpty()) {
            return fail(error);
        }
    }
    if (watch->linesWithOldValues() > 0) {
        m_terminal.printError(WorkbenchRunText::tr("%1: lines with old values, because a module did not answer: %2")
                                  .arg(watch->file().path())
                                  .arg(watch->linesWithOldValues()));
    }
    if (m_selfTest == nullptr) {
        m_terminal.print(WorkbenchRunText::tr("Lines recorded: %1; the log is %2")
                             .arg(watch->file().dataLines())
                             .arg(watch->file().path()));
    }
    return 0;
}

/// Runs the scene, which is set up, and looks at all that came of it.
int WorkbenchRun::testItself()
{
    SelfTest &test = *m_selfTest;
    const int curves = m_plan.scene.sampledCurves();
    test.checkDrawings();
    test.noteEmptyPlot(m_container);
    const int exitCode = runTimed();
    if (EndSignals::instance() != nullptr && EndSignals::instance()->exitCodeOr(0) != 0) {
        return exitFailure; // a run that was cut short cannot be checked
    }
    if (test.check(exitCode == 0, WorkbenchRunText::tr("scene: \"%1\" ran for %2 s and was recorded")
                                      .arg(m_plan.scene.shownTitle())
                                      .arg(m_plan.seconds))) {
        const RecordingWatch *const watch = m_window->recordings()->watch(m_container);
        test.checkPicture(m_plan.picture, curves);
        test.checkLog(m_plan.log, curves, watch->file().dataLines() + watch->missingLines());
    }
    const QList<ContainerInterface *> containers = m_workbench.containers();
    for (ContainerInterface *const each : containers) {
        test.checkContainer(*m_window, each);
    }
    return test.hasFailed() ? exitFailure : 0;
}

/// What keeps devices from answering at the end of a run.
void WorkbenchRun::printTroubles() const
{
    const ModuleRack &modules = m_workbench.modules();
    for (int index = 0; index < modules.count(); ++index) {
        const auto *const device = modules.moduleAs<ModbusModule>(index);
        const QString trouble = device == nullptr ? QString() : device->state().trouble;
        if (!trouble.isEmpty()) {
            m_terminal.printError(QStringLiteral("%1: %2").arg(modules.settings(index).key, trouble));
        }
    }
}

int WorkbenchRun::fail(const QString &problem) const
{
    m_terminal.printError(problem);
    return exitFailure;
}
