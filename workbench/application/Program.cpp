#include "application/Program.h"

#include "application/EndSignals.h"
#include "application/Language.h"
#include "application/Options.h"
#include "application/PluginFolders.h"
#include "application/RunPlan.h"
#include "application/SelfTest.h"
#include "application/Terminal.h"
#include "application/WorkbenchRun.h"
#include "setup/SceneReader.h"
#include "window/Preferences.h"
#include "window/Workbench.h"

#include "host/AppSettings.h"

#include <QApplication>
#include <QFileInfo>

#include <clocale>
#include <memory>
#include <optional>

namespace
{

constexpr int exitFailure = RunPlanResult::exitFailure;
constexpr int exitUsage = RunPlanResult::exitUsage;
constexpr int headlessFontPoints = 8;

struct ProgramText
{
    Q_DECLARE_TR_FUNCTIONS(Program)
};

/// Whether there is no display, and no platform plugin was chosen either.
bool lacksDisplay()
{
    const auto isEmpty = [](const char *name) { return qEnvironmentVariableIsEmpty(name); };
    return isEmpty("DISPLAY") && isEmpty("WAYLAND_DISPLAY") && isEmpty("QT_QPA_PLATFORM");
}

int listScenes(const Terminal &terminal)
{
    const QStringList names = shippedScenes();
    for (const QString &name : names) {
        const Scene scene = readSceneFile(shippedScenePath(name)).scene;
        terminal.print(QStringLiteral("%1  %2").arg(name, -12).arg(scene.shownTitle()));
    }
    return 0;
}

/// Lists the plugins that were found; returns the exit code, 0 when all can be loaded.
int listPlugins(const Options &options, const Terminal &terminal)
{
    const QStringList files = PluginFolders::files(options.plugins);
    if (files.isEmpty()) {
        terminal.printError(PluginFolders::noFilesText(options.plugins));
        return exitFailure;
    }
    Workbench workbench(SimulationClock::Drive::Exchanges, 1);
    int exitCode = 0;
    for (const QString &file : files) {
        const QString problem = workbench.loadPlugin(file);
        if (!problem.isEmpty()) {
            terminal.printError(problem);
            exitCode = exitFailure;
            continue;
        }
        const int plugin = workbench.pluginCount() - 1;
        terminal.print(
            QStringLiteral("%1  %2").arg(workbench.pluginTitle(plugin), -20).arg(workbench.pluginPath(plugin)));
    }
    return exitCode;
}

/// What needs no windows; the exit code, or nothing where a run is wanted.
std::optional<int> answerWithoutWindows(const OptionsResult &result, const Terminal &terminal)
{
    if (!result.error.isEmpty()) {
        terminal.printError(result.error + ProgramText::tr(" (--help lists the options)"));
        return exitUsage;
    }
    if (result.options.wantsHelp) {
        std::fputs(qPrintable(optionsHelp()), stdout);
        return 0;
    }
    if (result.options.wantsVersion) {
        terminal.print(QStringLiteral("xy-plot-workbench " PROGRAM_VERSION));
        return 0;
    }
    return result.options.wantsSceneList ? std::make_optional(listScenes(terminal)) : std::nullopt;
}

/// Carries out what \a options ask for; the application object is there.
int run(Options options, bool isHeadless, const Terminal &terminal)
{
    if (options.wantsPluginList) {
        return listPlugins(options, terminal);
    }
    std::unique_ptr<SelfTest> selfTest;
    if (options.wantsSelfTest) {
        selfTest = std::make_unique<SelfTest>(terminal);
        options = selfTest->completed(options);
    }
    const RunPlanResult result = planRun(options, isHeadless);
    if (!result.error.isEmpty()) {
        terminal.printError(result.error);
        return result.exitCode;
    }
    if (isHeadless && selfTest == nullptr) {
        terminal.print(ProgramText::tr("There is no display: \"%1\" runs off screen for %2 s.")
                           .arg(result.plan.scene.shownTitle())
                           .arg(result.plan.seconds));
    }
    return WorkbenchRun(result.plan, terminal, selfTest.get()).exec();
}

/// Has the settings file at \a path used from now on, or the usual one; false when there is none to read.
bool useSettings(const QString &path)
{
    if (!path.isEmpty()) {
        AppSettings::setStoreFile(path);
    }
    return QFileInfo(AppSettings::storeFile()).isFile(); // reading a pipe would wait for its writer
}

/// The language of the command line, or the \a remembered one, or that of the system.
QString languageOf(const QStringList &arguments, const QString &remembered)
{
    QString asked = languageOption(arguments);
    if (!asked.isEmpty()) {
        return asked;
    }
    return Language::codes().contains(remembered) ? remembered : Language::ofSystem();
}

} // namespace

int runProgram(int argc, char **argv)
{
    std::setlocale(LC_ALL, ""); // as the application object will do, which comes too late for the arguments
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    int argumentCount = 1; // Qt has a --plugin of its own and must not see the rest
    const Terminal terminal;
    const bool isHeadless = lacksDisplay();
    QString language;
    PaletteChoice palette = PaletteChoice::System;
    OptionsResult result;
    {
        const QCoreApplication application(argumentCount, argv); // for the language
        const Options options = parseOptions(arguments).options; // errors are for later, in the right language
        const bool remembers = keepsState(options, isHeadless) && useSettings(options.settings);
        palette = options.palette.value_or(remembers ? Preferences::palette() : PaletteChoice::System);
        language = languageOf(arguments, remembers ? Preferences::language() : QString());
        Language::use(language);
        result = parseOptions(arguments);
        if (const std::optional<int> exitCode = answerWithoutWindows(result, terminal)) {
            return *exitCode;
        }
    }

    if (isHeadless) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    printLoggedMessages();
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); // theirs cannot be asked what was chosen
    const QApplication application(argumentCount, argv);
    const EndSignals endSignals;
    QCoreApplication::setApplicationName(QStringLiteral("xy-plot-workbench"));
    QGuiApplication::setDesktopFileName(QStringLiteral(DESKTOP_ENTRY)); // whose icon the windows get on a desktop
    Language::use(language);
    applyPalette(palette);
    if (isHeadless) {
        QFont font = QApplication::font();
        font.setPointSize(headlessFontPoints); // the platform's own is made for no screen in particular
        QApplication::setFont(font);
    }
    return endSignals.exitCodeOr(run(result.options, isHeadless, terminal));
}
