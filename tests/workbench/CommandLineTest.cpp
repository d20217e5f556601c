#include "GuardedTest.h"

#include <csignal>
#include <functional>

namespace
{

constexpr int maximumRunMs = 60000;

constexpr const char *platform = "QT_QPA_PLATFORM";

using Environment = QVector<QPair<const char *, const char *>>;

struct Outcome
{
    int exitCode = -1;
    QString output;
    QString errors;
};

} // namespace

/// The built program with the real plugin, run as a person without a display would.
class CommandLineTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void mistakeEndsInOneLineAndLeavesNothing_data()
    {
        testRows<int, QString>(
            {"exitCode", "fragment"},
            {{"--colour", 2, "colour"},
             {"--language de --seconds 0", 2, "erwartet wird eine Zahl"},
             {"--scene sphere", 2, "circle"},
             {"--scene ../scene.json", 1, "no motor \"Axis 7\""},
             {"--plugin absent.so", 1, "absent.so"},
             {"--list-plugins --plugin .", 1, "no plugin file"},
             {"--scene circle --plugin " FIXTURE_FOLDER "/minimal_container.so", 1, "RadioButtonFrame"},
             {"--size 1x1", 1, "cannot be 1x1, it needs at least"},
             {"--seconds 1 --log /proc/run.csv", 1, "could not be opened"}});
    }

    void mistakeEndsInOneLineAndLeavesNothing()
    {
        QFETCH(QString, fragment);
        written("scene.json", R"({ "title": "T", "modules": [ { "kind": "stepper-3", "key": "S" } ], "curves": [
            { "x": { "module": "S", "motor": "Axis 7", "value": "Actual position [microsteps]" },
              "y": { "module": "S", "motor": "Axis 0", "value": "Actual position [microsteps]" } } ] })");
        const Outcome outcome = run(QTest::currentDataTag());
        QTEST(outcome.exitCode, "exitCode");
        QVERIFY2(outcome.errors.count('\n') == 1 && outcome.errors.contains(fragment), qPrintable(outcome.errors));
        QCOMPARE(leftBehind(), QStringList());
    }

    void sceneLeavesItsPicture()
    {
        written("map.json", R"({ "title": "T", "values": [ { "name": "A", "table": "coil", "address": 0 } ] })");
        const Outcome outcome = run("--seconds 1 --scene four-curves --size 900x500 --palette dark "
                                    "--device modbus-tcp:127.0.0.1:1/1,../map.json");
        QVERIFY2(outcome.errors.contains("DEV0/map: The host refuses") && outcome.errors.count('\n') == 1,
                 qPrintable(outcome.errors));
        QCOMPARE(outcome.exitCode, 0);
        QCOMPARE(leftBehind(), QStringList("xy-plot.png"));
        const QImage picture(folder() + "/xy-plot.png");
        QCOMPARE(picture.size(), QSize(900, 500));
        QVERIFY2(picture.pixelColor(2, 2).lightness() < 80, "the palette is not the dark one");
        QVERIFY2(!QDir(temporaryPath("config")).exists(), "the user's settings were touched");
    }

    void setUpWithSeveralContainersIsRecorded()
    {
        written("bench.xyplot",
                R"({ "title": "T", "modules": [ { "kind": "servo-1", "key": "S" } ],
            "containers": [ { "plugin": "XYPlotter", "window": { "state": "closed" }, "curves": [
                { "x": { "module": "S", "value": "Actual position [increments]" },
                  "y": { "module": "S", "value": "Actual velocity [increments/s]" } },
                { "x": null, "y": null, "on": false } ] },
              { "plugin": "XYPlotter", "curves": [] } ] })");
        const Outcome outcome = run("../bench.xyplot --seconds 0.5 --log run.csv --picture out.png");
        QCOMPARE(outcome.errors, QString());
        QCOMPARE(outcome.exitCode, 0);
        QCOMPARE(leftBehind(), QStringList({"out.png", "run.csv"}));
        const QByteArrayList lines = linesOf(folder() + "/run.csv");
        QVERIFY(lines.size() > 10 && lines.at(1).count(';') == 3); // of the one curve that has sources
    }

    void sameCommandRecordsTheSameLines()
    {
        const QByteArray scene = R"({ "title": "T", "seed": 4, "modules": [ { "kind": "servo-1", "key": "S" },
            { "kind": "servo-1", "key": "T" },
            { "kind": "recording", "key": "R", "pluggedIn": false, "file": "absent.csv" } ], "curves": [
            { "x": { "module": "S", "value": "Torque current [mA]" },
              "y": { "module": "T", "value": "Torque current [mA]" } },
            { "x": { "module": "S", "value": "Actual velocity [increments/s]" },
              "y": { "module": "T", "value": "Actual velocity [increments/s]" } } ] })";
        written("scene.json", scene);
        written("turned.json", QByteArray(scene)
                                   .replace("\"key\": \"S\"", "\"key\": \"\"")
                                   .replace("\"key\": \"T\"", "\"key\": \"S\"")
                                   .replace("\"key\": \"\"", "\"key\": \"T\""));
        const QString path = folder() + "/run.csv";
        QByteArrayList earlier;
        for (int attempt = 0; attempt < 3; ++attempt) { // the others overwrite
            const Outcome outcome = run(QString("--seconds 0.6 --log run.csv --scene ") +
                                        (attempt < 2 ? "../scene.json" : "../turned.json --seed 3"));
            QCOMPARE(outcome.errors, QString());
            QCOMPARE(leftBehind(), QStringList("run.csv"));
            QByteArrayList lines = linesOf(path);
            QCOMPARE(lines.takeLast(), QByteArray());
            QVERIFY(lines.size() > 12);
            QVERIFY(lines.at(0).startsWith("Module:;") && lines.at(1).startsWith("Counter;"));
            for (int i = 0; i < lines.size(); ++i) {
                QVERIFY(lines.at(i).endsWith(";\r"));
                QCOMPARE(lines.at(i).count(';'), 5); // a column per value from the first line on, as in the header
                QVERIFY(i < 2 || lines.at(i).startsWith(QByteArray::number(i - 1) + ';'));
            }
            QVERIFY(outcome.output.contains(QString("Lines recorded: %1;").arg(lines.size() - 2)));
            const int common = attempt == 0 ? 0 : qMin(lines.size(), earlier.size());
            if (attempt < 2) {
                QCOMPARE(lines.mid(0, common), earlier.mid(0, common));
            } else { // each module has the seed of the one before it plus 1: S the same again, T another
                QCOMPARE(column(lines.mid(2, common - 2), 1), column(earlier.mid(2, common - 2), 1));
                QVERIFY(column(lines.mid(2, common - 2), 2) != column(earlier.mid(2, common - 2), 2));
            }
            earlier = lines;
        }
        // Played back, it gives the same rows. The first row gives the first point of each curve, which is not logged.
        QCOMPARE(run("--recording run.csv --seconds 0.5 --log again.csv").errors, QString());
        const QByteArrayList again = linesOf(folder() + "/again.csv");
        QVERIFY(again.size() > 12);
        for (int line = 2; line < qMin(again.size(), earlier.size()) - 1; ++line) {
            const QByteArray expected = earlier.at(line + 1).mid(earlier.at(line + 1).indexOf(';'));
            QCOMPARE(again.at(line).mid(again.at(line).indexOf(';')), expected);
        }
    }

    void removedLogIsReported()
    {
        const QString path = folder() + "/run.csv";
        const Outcome outcome = run("--seconds 50 --log run.csv", [&path](const QProcess &process) {
            QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(path).size() > 200, maximumWaitMs); // lines, below the header
            QVERIFY(QFile::remove(path));
            QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(path), maximumWaitMs); // the next line makes a new one
            ::kill(pid_t(process.processId()), SIGINT);
        });
        QCOMPARE(outcome.exitCode, 128 + SIGINT);
        static const QRegularExpression pattern("run.csv was replaced .* its header and [0-9]+ lines? are gone\n$");
        QVERIFY2(pattern.match(outcome.errors).hasMatch(), qPrintable(outcome.errors));
    }

    void languageIsTheSystemsOwn()
    {
        // Of the C locale there are no languages.
        const Environment german = {{"LC_ALL", "en_US.UTF-8"}, {"LANGUAGE", "fr:de_AT:en"}};
        const Outcome outcome = run("--list-scenes", {}, german);
        QVERIFY2(outcome.output.contains("four-curves   Vier Kurven"), qPrintable(outcome.output));
        QVERIFY(run("--help").output.startsWith("Usage"));

        // A person's choice, which only counts where there is a display.
        const QString settings = written("used.ini", "[Workbench]\nLanguage=de\n");
        const QString errors = run("--plugin absent.so --settings " + settings, {}, {{platform, "offscreen"}}).errors;
        QVERIFY2(errors.contains("gibt es nicht"), qPrintable(errors));
    }

    void signalEndsAsClosingDoes()
    {
        const QString log = folder() + "/run.csv";
        const Outcome outcome = run("--seconds 50 --log run.csv --picture run.png", [&](const QProcess &process) {
            QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(log).size() > 200, maximumWaitMs);
            ::kill(pid_t(process.processId()), SIGTERM);
        });
        QCOMPARE(outcome.exitCode, 128 + SIGTERM);
        QVERIFY2(outcome.output.contains("Lines recorded: ") && outcome.output.contains("the picture is"),
                 qPrintable(outcome.output));
        QVERIFY(!QImage(folder() + "/run.png").isNull());
        QVERIFY(linesOf(log).constLast().isEmpty());
        QCOMPARE(temporaryFolders(), QStringList());
    }

    void secondSignalEndsAtOnce()
    {
        // Both arrive while the program is stopped: the first one's handler runs, but not the event loop.
        const Outcome outcome = run("--seconds 50", [](QProcess &process) {
            process.waitForReadyRead(); // it says that there is no display, with its signals handled
            const auto id = pid_t(process.processId());
            for (const int number : {SIGSTOP, SIGINT, SIGTERM, SIGCONT}) {
                ::kill(id, number);
            }
        });
        QCOMPARE(outcome.exitCode, -1); // by the signal
        QCOMPARE(leftBehind(), QStringList());
    }

    /// On a platform that saves what its windows show as pictures: the palette is the one that was chosen before.
    void signalClosesTheWindow()
    {
        const QByteArray choice = "[Workbench]\nPalette=dark\n";
        const QString settings = written("used.ini", choice);
        const QString picture = folder() + "/output0000.png";
        const auto hangUp = [&](const QProcess &process) {
            QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(settings).size() > choice.size(), maximumWaitMs); // the curve is chosen
            QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(picture), maximumWaitMs);
            ::kill(pid_t(process.processId()), SIGHUP);
        };
        const Outcome outcome = run("--scene circle --settings " + settings, hangUp,
                                    {{platform, "minimal"}, {"QT_DEBUG_BACKINGSTORE", "1"}});
        QCOMPARE(outcome.exitCode, 128 + SIGHUP);
        QCOMPARE(outcome.errors, QString());
        QCOMPARE(temporaryFolders(), QStringList());
        QVERIFY(QImage(picture).pixelColor(2, 2).lightness() < 80);
    }

    void selfTestReportsWhatFails()
    {
        const QPair<QString, QString> faults[] = {
            {"", ""}, // none
            {" --plugin " FIXTURE_FOLDER "/missing_symbol.so", "definedNowhere"},
            {" --plugin " PLUGIN " --plugin " FIXTURE_FOLDER "/minimal_container.so", "\"Minimal\" opens"}};
        for (const auto &[plugins, failure] : faults) {
            const Outcome outcome = run("--self-test" + plugins);
            const QStringList lines = outcome.output.split('\n');
            const QString failed = lines.filter(QRegularExpression("^FAIL")).join('\n');
            QVERIFY2(failed.contains(failure) && failed.isEmpty() == failure.isEmpty() && !failed.contains('\n'),
                     qPrintable(outcome.output));
            QCOMPARE(outcome.exitCode, failure.isEmpty() ? 0 : 1);
            // Among them are the four curves in a picture and in a log.
            QVERIFY(failure == "definedNowhere" || lines.filter(QRegularExpression("^ok ")).size() > 8);
            QCOMPARE(leftBehind(), QStringList());
        }
    }

    void pluginsOfTheUserAreLoadedBesideTheOwn()
    {
        const QString plugins = temporaryPath("data/xy-plot-workbench/plugins");
        QVERIFY(QDir().mkpath(plugins));
        // They come before the program's own one in text order, but scenes are still made for that one.
        QVERIFY(QFile::copy(FIXTURE_FOLDER "/minimal_container.so", plugins + "/a.so"));
        QVERIFY(QFile::copy(FIXTURE_FOLDER "/other_interface.so", plugins + "/b.so"));
        const Outcome list = run("--list-plugins");
        QCOMPARE(list.exitCode, 1);
        static const QRegularExpression pattern("^XY-Plotter .+\nMinimal .+/a.so\n$");
        QVERIFY2(pattern.match(list.output).hasMatch(), qPrintable(list.output));
        const Outcome scene = run("--seconds 1");
        QCOMPARE(scene.exitCode, 0); // without the broken one, which it names
        QVERIFY2(scene.errors.count('\n') == 1 && scene.errors.contains("b.so: "), qPrintable(scene.errors));
    }

private:
    static QByteArrayList column(const QByteArrayList &lines, int index)
    {
        QByteArrayList fields;
        for (const QByteArray &line : lines) {
            fields.append(line.split(';').value(index));
        }
        return fields;
    }

    QString folder() const // where the program is started
    {
        QString path = temporaryPath("folder");
        QDir().mkpath(path);
        return path;
    }

    /// \param meanwhile what is done to the program while it runs
    /// \param extra     variables of its environment, in which there is no display otherwise
    Outcome run(const QString &arguments, const std::function<void(QProcess &)> &meanwhile = {},
                const Environment &extra = {}) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *const name : {"DISPLAY", "WAYLAND_DISPLAY", platform}) {
            environment.remove(name);
        }
        for (const auto &[name, value] : extra) {
            environment.insert(name, value);
        }
        QDir().mkpath(temporaryPath("tmp"));
        environment.insert("TMPDIR", temporaryPath("tmp"));
        environment.insert("XDG_CONFIG_HOME", temporaryPath("config"));
        environment.insert("XDG_DATA_HOME", temporaryPath("data"));
        environment.insert("QT_LOGGING_RULES", "default.info=false"); // of the fixtures
        if (arguments.contains("--log") || arguments.contains("--self-test")) {
            // Whole stacks, though slow: by them a leak checker knows the records that the plugin keeps on purpose.
            environment.insert("ASAN_OPTIONS", "fast_unwind_on_malloc=0");
        }
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(folder());
        process.start(PROGRAM, arguments.split(' '));
        if (meanwhile) {
            process.waitForStarted();
            meanwhile(process);
            if (QTest::currentTestFailed()) {
                process.kill(); // it would run to its end
            }
        }
        if (!process.waitForFinished(maximumRunMs) || process.exitStatus() != QProcess::NormalExit) {
            return {-1, {}, process.errorString()};
        }
        return {process.exitCode(), QString::fromLocal8Bit(process.readAllStandardOutput()),
                QString::fromLocal8Bit(process.readAllStandardError())};
    }

    QStringList temporaryFolders() const // of the program's own
    {
        return QDir(temporaryPath("tmp")).entryList({"xy-plot-workbench*"});
    }

    QStringList leftBehind() const
    {
        return QDir(folder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
};

GUARDED_TEST(CommandLineTest)
#include "CommandLineTest.moc"
