#include "Language.h"
#include "MainWindow.h"
#include "Options.h"
#include "RecordingDriver.h"
#include "Recordings.h"
#include "RunPlan.h"
#include "SceneReader.h"
#include "SceneRunner.h"
#include "TimedRun.h"
#include "Workbench.h"

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
                .arg(container->minimumSizeHint().width())
                .arg(container->minimumSizeHint().height());
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
    say(Text::tr("Lines recorded: %1; the log is %2").arg(watch->dataLines()).arg(watch->path()));
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
    say(Text::tr("Answers read: %1; the picture is %2").arg(modules.answeredRequests()).arg(run.picture));
    return 0;
}

int runWorkbench(const Options &options, const RunPlan &run)
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

    const auto drive = run.hasScene ? SimulationClock::Drive::Exchanges : SimulationClock::Drive::WallClock;
    Workbench workbench(drive, run.scene.stepsPerExchange());
    const QString pluginProblem = workbench.loadPlugin(run.plugin);
    if (!pluginProblem.isEmpty()) {
        return complain(pluginProblem, exitFailure);
    }
    quint32 seed = options.seed.value_or(run.scene.seed);
    for (const SceneModule &module : run.scene.modules) {
        workbench.modules().add(module, seed++);
    }

    MainWindow window(&workbench);
    ContainerInterface *const container = window.addContainer();
    if (container == nullptr) {
        return complain(Text::tr("%1: this plugin makes no container").arg(run.plugin), exitFailure);
    }
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
    return run.isTimed ? runTimed(window, container, workbench.modules(), run) : QCoreApplication::exec();
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
    const Options options = parseOptions(arguments).options;
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
    QCoreApplication::setApplicationName(QStringLiteral("xy-plot-workbench"));
    Language::use(languageOf(options));
    applyPalette(options.palette);
    if (isHeadless) {
        QFont font = QApplication::font();
        font.setPointSize(headlessFontPoints); // the platform's own is made for no screen in particular
        QApplication::setFont(font);
    }

    const RunPlanResult result = planRun(options, isHeadless);
    if (!result.error.isEmpty()) {
        return complain(result.error, result.exitCode);
    }
    const RunPlan &run = result.plan;
    if (isHeadless) {
        say(Text::tr("There is no display: \"%1\" runs off screen for %2 s.")
                .arg(run.scene.shownTitle())
                .arg(run.seconds));
    }
    return runWorkbench(options, run);
}
