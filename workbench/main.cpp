#include "MainWindow.h"
#include "Options.h"
#include "SceneReader.h"
#include "SceneRunner.h"
#include "TimedRun.h"
#include "Workbench.h"

#include "host/AppSettings.h"
#include "host/ContainerInterface.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <clocale>
#include <cstdio>
#include <cstdlib>

namespace
{

constexpr int exitFailure = 1;
constexpr int exitUsage = 2;
constexpr double defaultRunSeconds = 5.0;
constexpr QSize defaultPictureSize(1000, 600); // wide enough for a square plot beside the tables
constexpr int headlessFontPoints = 8;

QString translated(const char *text)
{
    return QCoreApplication::translate("main", text);
}

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

/// Drops what the toolkit has to say about screenless windows and bare environments; nobody here can act upon it.
void handleMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (text.endsWith(QLatin1String("does not support propagateSizeHints()")) ||
        text.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set"))) {
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
        say(QStringLiteral("%1  %2").arg(name, -12).arg(readSceneFile(shippedScenePath(name)).scene.title));
    }
    return 0;
}

/// What a run of the program is made of, once the command line is understood.
struct Run
{
    Scene scene;
    bool hasScene = false;
    bool isTimed = false;
    double seconds = defaultRunSeconds;
    QString plugin;
    QString picture; ///< absolute path
    QSize size;      ///< of the container, widget pixels; invalid where the window decides
};

/// Completes \a run from \a options; returns 0, or the exit code after having complained.
int prepare(const Options &options, bool isHeadless, Run &run)
{
    run.isTimed = isHeadless || options.seconds || !options.picture.isEmpty();
    run.seconds = options.seconds.value_or(defaultRunSeconds);
    run.size = options.size.isValid() || !run.isTimed ? options.size : defaultPictureSize;
    run.plugin = options.plugin.isEmpty() ? QDir::cleanPath(QCoreApplication::applicationDirPath() +
                                                            QStringLiteral("/../plugins/container_xy_plot.so"))
                                          : options.plugin;
    run.picture =
        QFileInfo(options.picture.isEmpty() ? QStringLiteral("xy-plot.png") : options.picture).absoluteFilePath();
    QString name = options.scene;
    if (name.isEmpty() && run.isTimed) {
        name = QStringLiteral("circle");
    }
    run.hasScene = !name.isEmpty();
    QString path = startScenePath();
    if (shippedScenes().contains(name)) {
        path = shippedScenePath(name);
    } else if (run.hasScene) {
        if (!QFileInfo::exists(name)) {
            return complain(translated("no scene and no file is called \"%1\"; the scenes are: %2")
                                .arg(name, shippedScenes().join(QStringLiteral(", "))),
                            exitUsage);
        }
        path = name;
    }
    const SceneResult result = readSceneFile(path);
    if (!result.error.isEmpty()) {
        return complain(result.error, exitFailure);
    }
    run.scene = result.scene;
    if (const QString problem = TimedRun::problemWith(run.picture); run.isTimed && !problem.isEmpty()) {
        return complain(problem, exitFailure);
    }
    return 0;
}

/// Opens the container, makes the scene's choices and sizes the plot window; returns what went wrong.
QString setUp(MainWindow &window, ContainerInterface *container, const Run &run)
{
    window.openContainer(container);
    if (run.size.isValid()) {
        const QSize actualSize = window.resizeContainer(container, run.size);
        if (actualSize != run.size) {
            return translated("the plot window cannot be %1x%2, it needs at least %3x%4")
                .arg(run.size.width())
                .arg(run.size.height())
                .arg(container->minimumSizeHint().width())
                .arg(container->minimumSizeHint().height());
        }
    }
    return SceneRunner(container).apply(run.scene);
}

int runWorkbench(const Options &options, const Run &run)
{
    // A scene has to show the same whatever was chosen in earlier runs, so remembered choices stay outside.
    QTemporaryDir throwAway;
    if (!options.settings.isEmpty()) {
        AppSettings::setStoreFile(QFileInfo(options.settings).absoluteFilePath());
    } else if (run.hasScene) {
        AppSettings::setStoreFile(throwAway.filePath(QStringLiteral("settings.ini")));
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
        return complain(translated("%1: this plugin makes no container").arg(run.plugin), exitFailure);
    }
    window.show();
    const QString problem = setUp(window, container, run);
    if (!problem.isEmpty()) {
        return complain(problem, exitFailure);
    }
    if (run.hasScene) {
        window.setWindowTitle(QStringLiteral("%1 - %2").arg(run.scene.title, window.windowTitle()));
    } else {
        window.showHint();
    }
    if (!run.isTimed) {
        return QCoreApplication::exec();
    }
    TimedRun timedRun(container, run.picture);
    timedRun.start(run.seconds);
    QCoreApplication::exec();
    if (!timedRun.error().isEmpty()) {
        return complain(timedRun.error(), exitFailure);
    }
    say(translated("%1 answers read; the picture is %2").arg(workbench.modules().answeredRequests()).arg(run.picture));
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    std::setlocale(LC_ALL, ""); // as the application object will do, which comes too late for the arguments
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    const OptionsResult result = parseOptions(arguments);
    if (!result.error.isEmpty()) {
        return complain(result.error + translated(" (--help lists the options)"), exitUsage);
    }
    const Options &options = result.options;
    if (options.wantsHelp) {
        std::fputs(qPrintable(optionsHelp()), stdout);
        return 0;
    }
    if (options.wantsSceneList) {
        return listScenes();
    }

    const bool isHeadless = lacksDisplay();
    if (isHeadless) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    qInstallMessageHandler(handleMessage);
    // Plugins tell a lot of their doings as plain debug lines; the variable QT_LOGGING_RULES brings them back.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    int argumentCount = 1; // the toolkit has a --plugin of its own and must not see the rest
    const QApplication application(argumentCount, argv);
    QCoreApplication::setApplicationName(QStringLiteral("xy-plot-workbench"));
    applyPalette(options.palette);
    if (isHeadless) {
        QFont font = QApplication::font();
        font.setPointSize(headlessFontPoints); // the platform's own is made for no screen in particular
        QApplication::setFont(font);
    }

    Run run;
    if (const int exitCode = prepare(options, isHeadless, run); exitCode != 0) {
        return exitCode;
    }
    if (isHeadless) {
        say(translated("There is no display: \"%1\" runs off screen for %2 s.").arg(run.scene.title).arg(run.seconds));
    }
    return runWorkbench(options, run);
}
