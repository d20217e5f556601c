#include "GuardedTest.h"
#include "Paper.h"
#include "application/PluginFolders.h"
#include "application/RunPlan.h"
#include "application/SelfTest.h"
#include "application/TimedRun.h"
#include "application/WorkbenchRun.h"
#include "setup/SceneReader.h"

#include <sys/stat.h>

namespace
{

const char minimalPlugin[] = FIXTURE_FOLDER "/minimal_container.so";
const char brokenPlugin[] = FIXTURE_FOLDER "/missing_symbol.so";

OptionsResult parsed(const QString &arguments)
{
    return parseOptions(QStringList("program") + arguments.split(' '));
}

RunPlan planned(const QString &arguments, bool isHeadless)
{
    return planRun(parsed(QString("--plugin x.so ") + arguments).options, isHeadless).plan;
}

} // namespace

/// From the command line to the end of a run, inside this process and with a small plugin.
class ApplicationTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void valuesOfOptions_data()
    {
        QTest::addColumn<bool>("isSound");
        for (const char *const sound :
             {"--seconds 86400", "--seconds 1e-3", "--size 8192x1", "--size 1x8192", "--seed 4294967295", "--seed 0",
              "--palette dark", "--language en", "--picture a.PNG", "--picture a"}) {
            QTest::newRow(sound) << true;
        }
        for (const char *const unsound :
             {"--seconds 86400.1", "--seconds 0", "--seconds nan", "--size 8193x1", "--size 1x8193", "--size 0x5",
              "--size 5X5", "--seed 4294967296", "--seed -1", "--palette pink", "--language fr", "stray second",
              "--scene circle stray", "--picture a.Jpg", "--picture ", "--plugin ", "--seed"}) {
            QTest::newRow(unsound) << false;
        }
    }

    void valuesOfOptions()
    {
        QFETCH(bool, isSound);
        const QString error = parsed(QTest::currentDataTag()).error;
        QVERIFY2(error.isEmpty() == isSound, qPrintable(error));
        QVERIFY(!error.contains('\n'));
    }

    void everyOptionArrives()
    {
        const Options options = parsed("--scene S --seconds 2.5 --picture P --log L --size 30x40 --seed 9 --plugin A "
                                       "--plugin B --palette light --language de --settings T --self-test "
                                       "--device modbus-tcp:drive:502/1,maps/m.json")
                                    .options;
        QCOMPARE(QStringList({options.scene, options.picture, options.log, options.language, options.settings}),
                 QStringList({"S", "P", "L", "de", "T"}));
        QCOMPARE(options.plugins, QStringList({"A", "B"}));
        // A set-up that is saved elsewhere has to find it, too.
        QCOMPARE(options.devices.value(0).mapFile, QDir::current().absoluteFilePath("maps/m.json"));
        QVERIFY(options.seconds == 2.5 && options.seed == 9U && options.size == QSize(30, 40));
        QVERIFY(options.palette == PaletteChoice::Light && options.wantsSelfTest);
        QVERIFY(!options.wantsHelp && !options.wantsVersion && !options.wantsSceneList && !options.wantsPluginList);
        QVERIFY(parsed("--help").options.wantsHelp && parsed("--version").options.wantsVersion);
        QVERIFY(parsed("--list-scenes").options.wantsSceneList && parsed("--list-plugins").options.wantsPluginList);
        // Known before the rest is parsed, so that errors are reported in that language.
        QCOMPARE(languageOption({"program", "--seconds", "soon", "--language", "de", "--stray"}), QString("de"));
        QCOMPARE(languageOption({"program", "--language", "fr"}), QString());
    }

    void planHasDefaults()
    {
        const RunPlan headless = planned("--seed 5", true);
        QVERIFY(headless.isTimed && headless.hasScene && headless.seconds == 5.0);
        QCOMPARE(headless.size, QSize(1000, 600));
        QCOMPARE(headless.picture, QDir::current().absoluteFilePath("xy-plot.png"));
        QCOMPARE(headless.scene.title, readSceneFile(shippedScenePath("circle")).scene.title);
        QCOMPARE(headless.scene.seed, 5U);
        const RunPlan window = planned("--scene phase --settings s.ini", false);
        QVERIFY(!window.isTimed && window.hasScene && window.picture.isEmpty() && !window.size.isValid());
        QCOMPARE(window.scene.seed, 3U); // the scene's own
        QCOMPARE(window.settings, QDir::current().absoluteFilePath("s.ini"));
        const RunPlan bare = planned("--plugin y.so", false);
        QVERIFY(!bare.isTimed && !bare.hasScene && bare.scene.modules.size() == 3 && bare.scene.curves.isEmpty());
        QCOMPARE(bare.requiredPlugins, 2);
        const QString file = temporaryPath("bench.xyplot");
        QVERIFY(QFile::copy(startScenePath(), file));
        const RunPlan opened = planned(file, false); // from the event loop, when a person can be asked
        QVERIFY(!opened.hasScene && opened.openFile == file && opened.scene.title == bare.scene.title);
        const RunPlan timed = planned(QString("--seconds 1 ") + file, false);
        QVERIFY(timed.hasScene && timed.isSceneAsked && timed.openFile.isEmpty() && timed.scenePath == file);
        const QString log = temporaryPath("run.csv");
        QVERIFY(planned(QString("--log ") + log, false).picture.isEmpty());
        const RunPlan both = planned(QString("--log %1 --picture %1.png").arg(log), false);
        QVERIFY(both.isTimed && both.log == log && both.picture == log + ".png");
    }

    /// What a run would write or read is looked at before anything begins; %1 is a folder.
    void planFindsWhatCannotBe_data()
    {
        testRows<int, QString>(
            {"exitCode", "fragment"},
            {{"--log /dev/null", 0, ""},
             {"--log %1/absent/run.csv", 1, "absent/run.csv: cannot save there: there is no such folder"},
             {"--log %1/pipe", 1, "nobody reads"},
             {"--picture %1/pipe", 1, "a device or a pipe"},
             {"--settings %1/pipe --seconds 1", 1, "a device or a pipe"},
             {"--log %1/run.csv --picture %1/./run.csv", 2, "--log and --picture"},
             {"--picture %1/link --log %1/run.csv", 2, "--log and --picture"},
             {"--recording %1/absent.csv", 1, "absent.csv: there is no such file"},
             {"--recording %1/pipe", 1, "found a device or a pipe"},
             {"--recording %1/data.csv", 1, "data.csv: line 2, column 1: expected a number"},
             {"--recording %1/data.csv --log %1/data.csv", 2, "--recording and --log"}});
    }

    void planFindsWhatCannotBe()
    {
        QFETCH(int, exitCode);
        QFETCH(QString, fragment);
        written("data.csv", "name\nnone\n");
        const QString pipe = temporaryPath("pipe");
        QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), S_IRWXU), 0);
        QVERIFY(QFile::link(temporaryPath("run.csv"), temporaryPath("link"))); // to what is not there yet
        const QString arguments = QString(QTest::currentDataTag()).replace("%1", QFileInfo(pipe).absolutePath());
        const RunPlanResult result = planRun(parsed("--plugin x.so " + arguments).options, false);
        QVERIFY2(result.error.contains(fragment) && result.error.isEmpty() == fragment.isEmpty(),
                 qPrintable(result.error));
        QCOMPARE(result.exitCode, exitCode);
        QVERIFY(!QFileInfo(pipe).isFile() && !QFile::exists(temporaryPath("run.csv")));
    }

    void onlyRunsOfPeopleAreRemembered()
    {
        for (const char *const arguments :
             {"--palette dark", "bench.xyplot", "--settings s.ini", "--scene circle --settings s.ini"}) {
            QVERIFY2(keepsState(parsed(arguments).options, false), arguments);
            QVERIFY2(!keepsState(parsed(arguments).options, true), arguments);
        }
        for (const char *const arguments :
             {"--scene circle", "--seconds 1 --settings s.ini", "--log l.csv bench.xyplot", "--picture p.png",
              "--self-test --settings s.ini"}) {
            QVERIFY2(!keepsState(parsed(arguments).options, false), arguments);
        }
    }

    void runEndsAsItWent_data()
    {
        testRows<QStringList, int, QString, bool>(
            {"plugins", "required", "error", "isDone"}, // without an error where that is empty
            {{"well", {minimalPlugin}, 1, "", true},
             {"without a plugin that was not given", {minimalPlugin, brokenPlugin}, 1, "definedNowhere", true},
             {"a plugin is missing that was given", {minimalPlugin, brokenPlugin}, 2, "definedNowhere", false}});
    }

    void runEndsAsItWent()
    {
        QFETCH(QStringList, plugins);
        QFETCH(int, required);
        QFETCH(QString, error);
        QFETCH(bool, isDone);
        RunPlan plan = shortPlan();
        plan.plugins = plugins;
        plan.requiredPlugins = required;
        plan.size = QSize(300, 200);
        const Paper paper;
        QCOMPARE(WorkbenchRun(plan, paper.terminal).exec(), isDone ? 0 : 1);
        const QString errors = paper.errors();
        QVERIFY2(errors.contains(error) && errors.count('\n') == (error.isEmpty() ? 0 : 1), qPrintable(errors));
        QCOMPARE(paper.output().contains(plan.picture), isDone);
        QCOMPARE(QImage(plan.picture).size(), isDone ? plan.size : QSize(0, 0));
    }

    void runThatLosesItsWindowFails_data()
    {
        testRows<bool>({"isPlotOnly"}, {{"plot window", true}, {"main window", false}});
    }

    void runThatLosesItsWindowFails()
    {
        QFETCH(bool, isPlotOnly);
        const RunPlan plan = shortPlan();
        const Paper paper;
        bool isTitled = false;
        QTimer::singleShot(0, qApp, [isPlotOnly, &isTitled] {
            const QWidgetList windows = QApplication::allWidgets();
            for (QWidget *const window : windows) {
                isTitled =
                    isTitled || window->windowTitle().startsWith("One module of each kind[*] - XY Plot Workbench");
                if (isPlotOnly ? window->inherits("QMdiSubWindow") : window->isWindow()) {
                    window->close();
                }
            }
        });
        QCOMPARE(WorkbenchRun(plan, paper.terminal).exec(), 1);
        QVERIFY2(isTitled, "the window does not show which scene it is");
        const QString errors = paper.errors();
        QVERIFY2(errors.contains(isPlotOnly ? "the plot window was closed" : "before its time"), qPrintable(errors));
        QVERIFY(!QFile::exists(plan.picture));
    }

    void personsFileIsTheDocument()
    {
        const QString path = written("bench.json", R"({ "title": "T", "curves": [], "modules": [
            { "kind": "servo-1", "key": "S" }, { "kind": "io-block", "key": "O", "pluggedIn": false } ] })");
        RunPlan plan = planned(QString("--scene ") + path, false);
        plan.plugins = QStringList(minimalPlugin);
        // Looked for at once: texts of the plugin are gone with its file.
        QStringList missing = {"Dark", "Deutsch", "1 of 2 modules plugged in", "bench.json"};
        QTimer::singleShot(0, qApp, [&] {
            const QWidgetList windows = QApplication::topLevelWidgets();
            for (QWidget *const window : windows) {
                for (QAction *const action : partsOf<QAction>(*window)) {
                    missing.removeAll(action->text().remove('&'));
                }
                if (window->inherits("MainWindow")) {
                    for (const QLabel *const label : partsOf<QLabel>(*window)) {
                        missing.removeAll(label->text());
                    }
                    missing.removeAll(window->windowTitle().section('[', 0, 0));
                    QTimer::singleShot(0, qApp, [&missing] {
                        if (QWidget *const question = QApplication::activeModalWidget()) {
                            missing.append(question->windowTitle());
                            question->close();
                        }
                    });
                    partCalled<QAction>(*window, "Save")->trigger(); // without a question
                    window->close();
                }
            }
        });
        const Paper paper;
        QCOMPARE(WorkbenchRun(plan, paper.terminal).exec(), 0);
        QCOMPARE(missing, QStringList());
        const SceneResult saved = readSceneFile(path);
        QVERIFY(saved.error.isEmpty() && saved.scene.plugin == "MinimalContainer");
        QCOMPARE(saved.scene.takenOut, QStringList("O"));
    }

    void timedRunLastsAsLongAsAsked()
    {
        QWidget widget;
        widget.show();
        TimedRun run(&widget, QString());
        QElapsedTimer timer;
        timer.start();
        run.start(0.2);
        QCoreApplication::exec();
        QVERIFY2(timer.elapsed() >= 199, qPrintable(QString::number(timer.elapsed())));
    }

    void selfTestChecksTheLog_data()
    {
        testRows<QString, QString, int>({"original", "mistake", "recorded"},
                                        {{"sound", "", "", 20},
                                         {"line missing", "\n7;1;2;\r", "", 20},
                                         {"line twice", "\n8;", "\n7;", 20},
                                         {"header missing", "Module:;", ";", 20},
                                         {"blank in the header", "y;", "y; ", 20},
                                         {"another line end", "4;1;2;\r", "4;1;2;", 20},
                                         {"field missing", "4;1;2;", "4;1;", 20},
                                         {"field too many", "4;1;2;", "4;1;2;3;", 20},
                                         {"last line torn", "20;1;2;\r\n", "20;1;2;\r\n21;1;", 20},
                                         {"more recorded than written", "", "", 21},
                                         {"too few", "\n20;1;2;\r", "", 19}});
    }

    void selfTestChecksTheLog()
    {
        QFETCH(QString, original);
        QFETCH(QString, mistake);
        QFETCH(int, recorded);
        QString log = "Module:;M;M;\r\nCounter;x;y;\r\n";
        for (int line = 1; line <= 20; ++line) {
            log += QString("%1;1;2;\r\n").arg(line);
        }
        if (!original.isEmpty()) {
            log.replace(log.indexOf(original), original.size(), mistake);
        }
        const QString path = written("run.csv", log.toUtf8());
        const Paper paper;
        SelfTest test(paper.terminal);
        test.checkLog(path, 1, recorded);
        const bool isSound = qstrcmp(QTest::currentDataTag(), "sound") == 0;
        QVERIFY2(test.hasFailed() != isSound, qPrintable(paper.output()));
    }

    /// A plugin of one's own is tested beside the plot that the scene needs.
    void selfTestLoadsThePlot()
    {
        const Paper paper;
        const SelfTest test(paper.terminal);
        const auto plugins = [&](const QString &arguments) {
            return test.completed(parsed(arguments).options).plugins;
        };
        const QStringList beside = plugins(QString("--plugin ") + minimalPlugin);
        QCOMPARE(beside, QStringList({PluginFolders::plotterFile(), minimalPlugin}));
        QCOMPARE(plugins("--plugin /x/container_xy_plot.so").size(), 1);
        QVERIFY(plugins("--self-test").isEmpty()); // all that are found
    }

private:
    /// Without curves, which the small plugin has none for.
    RunPlan shortPlan() const
    {
        RunPlan plan;
        plan.scene = readSceneFile(startScenePath()).scene;
        plan.hasScene = true;
        plan.isTimed = true;
        plan.seconds = 0.05;
        plan.plugins = QStringList(minimalPlugin);
        plan.picture = temporaryPath("picture.png");
        return plan;
    }
};

GUARDED_TEST(ApplicationTest)
#include "ApplicationTest.moc"
