#include "application/EndSignals.h"
#include "application/Language.h"
#include "application/Options.h"
#include "application/PluginFolders.h"
#include "application/RecordingDriver.h"
#include "application/RunPlan.h"
#include "application/SelfTest.h"
#include "application/TimedRun.h"
#include "logging/Recordings.h"
#include "setup/SceneReader.h"
#include "setup/SceneRunner.h"
#include "window/MainWindow.h"
#include "window/Workbench.h"

#include "host/AppSettings.h"
#include "host/ContainerInterface.h"

#include <QApplication>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSettings>
#include <QTemporaryDir>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace
{

constexpr int exitFailure = RunPlanResult::exitFailure;
constexpr int exitUsage = RunPlanResult::exitUsage;
constexpr int headlessFontPoints = 8;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(main)
};

void say(const QString &text)
{
    std::fputs(qPrintable(text + QLatin1Char('\n')), stdout);
    std::fflush(stdout);
}

int complain(const QString &text, int exitCode)
{
    std::fputs(qPrintable(QStringLiteral("xy-plot-workbench: ") + text + QLatin1Char('\n')), stderr);
    return exitCode;
}

/// Whether there is nothing to show windows on, and nobody has chosen a platform either.
bool lacksDisplay()
{
    const auto isEmpty = [](const char *name) { return qEnvironmentVariableIsEmpty(name); };
    return isEmpty("DISPLAY") && isEmpty("WAYLAND_DISPLAY") && isEmpty("QT_QPA_PLATFORM");
}

/// Whether plain debug lines, of which containers write a lot, go to the terminal too.
bool printsDebugLines = false;

/// Drops what the toolkit has to say about screenless windows and bare environments; nobody here can act upon it.
void handleMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (text.endsWith(QLatin1String("does not support propagateSizeHints()")) ||
        text.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set"))) {
        return;
    }
    if (type == QtDebugMsg && !printsDebugLines && qstrcmp(context.category, "default") == 0) {
        return;
    }
    std::fputs(qPrintable(qFormatLogMessage(type, context, text) + QLatin1Char('\n')), stderr);
    if (type == QtFatalMsg) {
        std::abort();
    }
}

int listScenes()
{
    const QStringList names = shippedScenes();
    for (const QString &name : names) {
        say(QStringLiteral("%1  %2").arg(name, -12).arg(readSceneFile(shippedScenePath(name)).scene.shownTitle()));
    }
    return 0;
}

/// Lists the plugins that were found; the exit code tells whether all are of use.
int listPlugins(const Options &options)
{
    const QStringList files = PluginFolders::files(options.plugins);
    if (files.isEmpty()) {
        return complain(PluginFolders::noFilesText(options.plugins), exitFailure);
    }
    Workbench workbench(SimulationClock::Drive::Exchanges, 1);
    int exitCode = 0;
    for (const QString &file : files) {
        const QString problem = workbench.loadPlugin(file);
        if (!problem.isEmpty()) {
            exitCode = complain(problem, exitFailure);
            continue;
        }
        const int plugin = workbench.pluginCount() - 1;
        say(QStringLiteral("%1  %2").arg(workbench.pluginTitle(plugin), -20).arg(workbench.pluginPath(plugin)));
    }
    return exitCode;
}

/// Loads the plugins of \a run. One that cannot be done without ends it; the others are complained of.
bool loadPlugins(Workbench &workbench, const RunPlan &run, SelfTest *selfTest)
{
    int required = run.requiredPlugins;
    for (const QString &file : run.plugins) {
        const QString problem = workbench.loadPlugin(file);
        if (selfTest != nullptr) {
            selfTest->check(problem.isEmpty(), Text::tr("plugin: %1").arg(problem.isEmpty() ? file : problem));
        } else if (!problem.isEmpty()) {
            complain(problem, exitFailure);
        }
        if (required-- > 0 && !problem.isEmpty()) {
            return false;
        }
    }
    return true;
}

/// Makes one container of each plugin, the same way.
bool addContainers(MainWindow &window, const Workbench &workbench, const RunPlan &run, SelfTest *selfTest)
{
    for (int plugin = 0; plugin < workbench.pluginCount(); ++plugin) {
        if (window.addContainer(plugin) != nullptr) {
            continue;
        }
        const QString problem = Text::tr("%1: this plugin makes no container").arg(workbench.pluginPath(plugin));
        if (selfTest != nullptr) {
            selfTest->check(false, Text::tr("plugin: %1").arg(problem));
        } else {
            complain(problem, exitFailure);
        }
        if (plugin < run.requiredPlugins) {
            return false;
        }
    }
    return true;
}

/// Opens the container, makes the scene's choices and sizes the plot window; returns what went wrong.
QString setUp(MainWindow &window, ContainerInterface *container, const RunPlan &run)
{
    window.openContainer(container);
    if (run.size.isValid()) {
        const QSize actualSize = window.resizeContainer(container, run.size);
        if (actualSize != run.size) {
            return Text::tr("the plot window cannot be %1x%2, it needs at least %3x%4")
                .arg(run.size.width())
                .arg(run.size.height())
                .arg(actualSize.width())
                .arg(actualSize.height());
        }
    }
    return SceneRunner(container).apply(run.scene);
}

/// Has the container's curves recorded for the time of the run, which begins with the recording.
int runRecorded(MainWindow &window, ContainerInterface *container, const ModuleRack &modules, const RunPlan &run)
{
    RecordingWatch *const watch = window.recordings()->watch(container);
    TimedRun timedRun(container, run.picture);
    RecordingDriver driver(container, watch, run.log, [&] {
        // One sampling tick reads both values of all curves, and gives every curve its first point.
        return modules.answeredRequests() >= 2U * quint64(run.scene.curves.size());
    });
    QObject::connect(&driver, &RecordingDriver::begun, &timedRun, [&] { timedRun.start(run.seconds); });
    QObject::connect(&driver, &RecordingDriver::gaveUp, &timedRun, [] { QCoreApplication::exit(exitFailure); });
    QObject::connect(&timedRun, &TimedRun::ending, &driver, &RecordingDriver::stop);
    QCoreApplication::exec();
    for (const QString &error : {driver.error(), timedRun.error()}) {
        if (!error.isEmpty()) {
            return complain(error, exitFailure);
        }
    }
    if (watch->linesWithOldValues() > 0) {
        complain(Text::tr("%1: lines with old values, because a module did not answer: %2")
                     .arg(watch->path())
                     .arg(watch->linesWithOldValues()),
                 0);
    }
    if (!run.isSelfTest) {
        say(Text::tr("Lines recorded: %1; the log is %2").arg(watch->dataLines()).arg(watch->path()));
    }
    return 0;
}

int runTimed(MainWindow &window, ContainerInterface *container, const ModuleRack &modules, const RunPlan &run)
{
    if (!run.log.isEmpty()) {
        const int exitCode = runRecorded(window, container, modules, run);
        if (exitCode != 0 || run.picture.isEmpty()) {
            return exitCode;
        }
    } else {
        TimedRun timedRun(container, run.picture);
        timedRun.start(run.seconds);
        QCoreApplication::exec();
        if (!timedRun.error().isEmpty()) {
            return complain(timedRun.error(), exitFailure);
        }
    }
    if (!run.isSelfTest) {
        say(Text::tr("Answers read: %1; the picture is %2").arg(modules.answeredRequests()).arg(run.picture));
    }
    return 0;
}

/// Runs the scene, which is set up, and looks at all that came of it.
int testItself(SelfTest &test, MainWindow &window, const Workbench &workbench, const RunPlan &run)
{
    ContainerInterface *const container = workbench.containers().constFirst();
    const int curves = run.scene.curves.size();
    test.checkDrawings();
    test.noteEmptyPlot(container);
    const int exitCode = runTimed(window, container, workbench.modules(), run);
    if (EndSignals::instance() != nullptr && EndSignals::instance()->exitCodeOr(0) != 0) {
        return exitFailure; // what was cut short says nothing about the rest
    }
    if (test.check(
            exitCode == 0,
            Text::tr("scene: \"%1\" ran for %2 s and was recorded").arg(run.scene.shownTitle()).arg(run.seconds))) {
        const RecordingWatch *const watch = window.recordings()->watch(container);
        test.checkPicture(run.picture, curves);
        test.checkLog(run.log, curves, watch->dataLines() + watch->missingLines());
    }
    const QList<ContainerInterface *> containers = workbench.containers();
    for (ContainerInterface *const each : containers) {
        test.checkContainer(window, each);
    }
    return test.hasFailed() ? exitFailure : 0;
}

int runWorkbench(const Options &options, const RunPlan &run, SelfTest *selfTest)
{
    // A scene has to show the same whatever was chosen in earlier runs, so remembered choices stay outside.
    QTemporaryDir throwAway;
    if (run.hasScene) {
        AppSettings::setStoreFile(throwAway.filePath(QStringLiteral("settings.ini")));
        // The toolkit's file dialog remembers folders in a file of its own.
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, throwAway.path());
    }
    if (!options.settings.isEmpty()) {
        AppSettings::setStoreFile(QFileInfo(options.settings).absoluteFilePath());
    }

    // A timed run gives the same values whatever the computer's speed; where a person works, motors keep real time.
    const auto drive = run.isTimed ? SimulationClock::Drive::Exchanges : SimulationClock::Drive::WallClock;
    Workbench workbench(drive, run.scene.stepsPerExchange());
    if (!loadPlugins(workbench, run, selfTest)) {
        return exitFailure;
    }
    quint32 seed = options.seed.value_or(run.scene.seed);
    for (const ModuleSettings &module : run.scene.modules) {
        workbench.modules().add(module, seed++);
    }

    MainWindow window(&workbench);
    if (!addContainers(window, workbench, run, selfTest)) {
        return exitFailure;
    }
    ContainerInterface *const container = workbench.containers().constFirst();
    window.show();
    const QString problem = setUp(window, container, run);
    if (!problem.isEmpty()) {
        return complain(problem, exitFailure);
    }
    if (run.hasScene) {
        window.setWindowTitle(QStringLiteral("%1 - %2").arg(run.scene.shownTitle(), window.windowTitle()));
    } else {
        window.showHint();
    }
    if (selfTest != nullptr) {
        return testItself(*selfTest, window, workbench, run);
    }
    if (run.isTimed) {
        return runTimed(window, container, workbench.modules(), run);
    }
    if (const EndSignals *const endSignals = EndSignals::instance()) {
        QObject::connect(endSignals, &EndSignals::asked, &window, [&window] {
            window.close();
            QCoreApplication::quit(); // also when a dialog or a window of a container's own is still open
        });
    }
    return QCoreApplication::exec();
}

QString languageOf(const Options &options)
{
    return options.language.isEmpty() ? Language::ofSystem() : options.language;
}

/// Complains about the command line, or gives what needs no windows; returns the exit code, or -1 to go on.
int tellWithoutWindows(const QStringList &arguments, char **argv)
{
    int argumentCount = 1;
    const QCoreApplication application(argumentCount, argv); // for the language, of complaints too
    Language::use(languageOf(parseOptions(arguments).options));
    const OptionsResult result = parseOptions(arguments);
    if (!result.error.isEmpty()) {
        return complain(result.error + Text::tr(" (--help lists the options)"), exitUsage);
    }
    if (result.options.wantsHelp) {
        std::fputs(qPrintable(optionsHelp()), stdout);
        return 0;
    }
    if (result.options.wantsVersion) {
        say(QStringLiteral("xy-plot-workbench " PROGRAM_VERSION));
        return 0;
    }
    return result.options.wantsSceneList ? listScenes() : -1;
}

} // namespace

int main(int argc, char **argv)
{
    std::setlocale(LC_ALL, ""); // as the application object will do, which comes too late for the arguments
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    const int toldExitCode = tellWithoutWindows(arguments, argv);
    if (toldExitCode >= 0) {
        return toldExitCode;
    }
    Options options = parseOptions(arguments).options;
    const bool isHeadless = lacksDisplay();
    if (isHeadless) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    qInstallMessageHandler(handleMessage);
    // Containers tell a lot of their doings as plain debug lines. The message panel gets them; the terminal does only
    // if the variable QT_LOGGING_RULES asks for them.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    printsDebugLines = QLoggingCategory::defaultCategory()->isDebugEnabled();
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=true"));
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); // theirs cannot be asked what was chosen
    int argumentCount = 1; // the toolkit has a --plugin of its own and must not see the rest
    const QApplication application(argumentCount, argv);
    const EndSignals endSignals;
    QCoreApplication::setApplicationName(QStringLiteral("xy-plot-workbench"));
    QGuiApplication::setDesktopFileName(QStringLiteral(DESKTOP_ENTRY)); // whose icon the windows get on a desktop
    Language::use(languageOf(options));
    applyPalette(options.palette);
    if (isHeadless) {
        QFont font = QApplication::font();
        font.setPointSize(headlessFontPoints); // the platform's own is made for no screen in particular
        QApplication::setFont(font);
    }

    if (options.wantsPluginList) {
        return listPlugins(options);
    }
    std::unique_ptr<SelfTest> selfTest;
    if (options.wantsSelfTest) {
        selfTest = std::make_unique<SelfTest>();
        options = selfTest->completed(options);
    }
    const RunPlanResult result = planRun(options, isHeadless);
    if (!result.error.isEmpty()) {
        return complain(result.error, result.exitCode);
    }
    const RunPlan &run = result.plan;
    if (isHeadless && !run.isSelfTest) {
        say(Text::tr("There is no display: \"%1\" runs off screen for %2 s.")
                .arg(run.scene.shownTitle())
                .arg(run.seconds));
    }
    return endSignals.exitCodeOr(runWorkbench(options, run, selfTest.get()));
}
