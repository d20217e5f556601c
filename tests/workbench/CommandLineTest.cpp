#include "GuardedTest.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>

#include <csignal>
#include <functional>

namespace
{

// Generous, for a busy machine: both end as soon as what they wait for is there.
constexpr int maximumWaitMs = 30000;
constexpr int maximumRunMs = 60000;

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
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("fragment");
        const auto row = [](int exitCode, const QString &arguments, const QString &fragment) {
            QTest::newRow(qPrintable(arguments)) << exitCode << arguments << fragment;
        };
        row(2, "--colour", "colour");
        row(2, "--language de --seconds 0", "erwartet wird eine Zahl");
        row(2, "--scene sphere", "circle");
        row(1, "--scene ../scene.json", "no motor \"Axis 7\"");
        row(1, "--plugin absent.so", "absent.so");
        row(1, "--list-plugins --plugin .", "no plugin file");
        row(1, "--scene circle --plugin " FIXTURE_FOLDER "/minimal_container.so", "RadioButtonFrame");
        row(1, "--size 1x1", "cannot be 1x1, it needs at least");
        row(1, "--seconds 1 --log /proc/run.csv", "could not be opened");
    }

    void mistakeEndsInOneLineAndLeavesNothing()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, fragment);
        written("scene.json", R"({ "title": "T", "modules": [ { "kind": "stepper-3", "key": "S" } ], "curves": [
            { "x": { "module": "S", "motor": "Axis 7", "value": "Actual position [microsteps]" },
              "y": { "module": "S", "motor": "Axis 0", "value": "Actual position [microsteps]" } } ] })");
        const Outcome outcome = run(arguments);
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
        const QImage picture(folder() + QStringLiteral("/xy-plot.png"));
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
        const QByteArrayList lines = linesOf(folder() + QStringLiteral("/run.csv"));
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
        const QString path = folder() + QStringLiteral("/run.csv");
        QByteArrayList earlier;
        for (int attempt = 0; attempt < 3; ++attempt) { // the others overwrite
            const Outcome outcome = run(QStringLiteral("--seconds 0.6 --log run.csv --scene ") +
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
            QVERIFY(outcome.output.contains(QStringLiteral("Lines recorded: %1;").arg(lines.size() - 2)));
            const int common = attempt == 0 ? 0 : qMin(lines.size(), earlier.size());
            if (attempt < 2) {
                QCOMPARE(lines.mid(0, common), earlier.mid(0, common));
            } else { // each module has the seed behind that of the one before it: S the same again, T another
                QCOMPARE(column(lines.mid(2, common - 2), 1), column(earlier.mid(2, common - 2), 1));
                QVERIFY(column(lines.mid(2, common - 2), 2) != column(earlier.mid(2, common - 2), 2));
            }
            earlier = lines;
        }
        // Played, it is the same row by row. The first row made the first point of each curve, which is not logged.
        QCOMPARE(run("--recording run.csv --seconds 0.5 --log again.csv").errors, QString());
        const QByteArrayList again = linesOf(folder() + QStringLiteral("/again.csv"));
        QVERIFY(again.size() > 12);
        for (int line = 2; line < qMin(again.size(), earlier.size()) - 1; ++line) {
            const QByteArray expected = earlier.at(line + 1).mid(earlier.at(line + 1).indexOf(';'));
            QCOMPARE(again.at(line).mid(again.at(line).indexOf(';')), expected);
        }
    }

    void removedLogIsReported()
    {
        const QString path = folder() + QStringLiteral("/run.csv");
        const Outcome outcome = run("--seconds 50 --log run.csv", [&path](const QProcess &process) {
            QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(path).size() > 200, maximumWaitMs); // lines, below the header
            QVERIFY(QFile::remove(path));
            QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(path), maximumWaitMs); // the next line makes a new one
            ::kill(pid_t(process.processId()), SIGINT);
        });
        QCOMPARE(outcome.exitCode, 128 + SIGINT);
        static const QRegularExpression pattern(
            QStringLiteral("run.csv was replaced .* its header and [0-9]+ lines? are gone\n$"));
        QVERIFY2(pattern.match(outcome.errors).hasMatch(), qPrintable(outcome.errors));
    }

    void languageIsTheSystemsOwn()
    {
        m_language = QStringLiteral("fr:de_AT:en");
        const Outcome outcome = run("--list-scenes");
        m_language.clear();
        QVERIFY2(outcome.output.contains("four-curves   Vier Kurven"), qPrintable(outcome.output));
        QVERIFY(run("--help").output.startsWith("Usage"));
    }

    void signalEndsAsClosingDoes()
    {
        const QString log = folder() + QStringLiteral("/run.csv");
        const Outcome outcome = run("--seconds 50 --log run.csv --picture run.png", [&](const QProcess &process) {
            QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(log).size() > 200, maximumWaitMs);
            ::kill(pid_t(process.processId()), SIGTERM);
        });
        QCOMPARE(outcome.exitCode, 128 + SIGTERM);
        QVERIFY2(outcome.output.contains("Lines recorded: ") && outcome.output.contains("the picture is"),
                 qPrintable(outcome.output));
        QVERIFY(!QImage(folder() + QStringLiteral("/run.png")).isNull());
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

    void signalClosesTheWindow()
    {
        m_platform = QStringLiteral("offscreen");
        const QString settings = temporaryPath("used.ini");
        const Outcome outcome = run("--scene circle --settings " + settings, [&](const QProcess &process) {
            QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(settings).size() > 0, maximumWaitMs); // the scene's choices are made
            ::kill(pid_t(process.processId()), SIGHUP);
        });
        m_platform.clear();
        QCOMPARE(outcome.exitCode, 128 + SIGHUP);
        QCOMPARE(outcome.errors, QString());
        QCOMPARE(temporaryFolders(), QStringList());
    }

    void selfTestReportsWhatFails()
    {
        const QPair<QString, QString> faults[] = {
            {FIXTURE_FOLDER "/missing_symbol.so", "definedNowhere"},
            {PLUGIN " --plugin " FIXTURE_FOLDER "/minimal_container.so", "\"Minimal\" opens"}};
        for (const auto &[plugins, failure] : faults) {
            const Outcome outcome = run("--self-test --plugin " + plugins);
            const QStringList lines = outcome.output.split(QLatin1Char('\n'));
            const QStringList failed = lines.filter(QRegularExpression("^FAIL"));
            QVERIFY2(failed.size() == 1 && failed.constFirst().contains(failure), qPrintable(outcome.output));
            QCOMPARE(outcome.exitCode, 1);
            // Of the last: the four curves in a picture and in a log.
            QVERIFY(failure == "definedNowhere" || lines.filter(QRegularExpression("^ok ")).size() > 8);
            QCOMPARE(leftBehind(), QStringList());
        }
    }

    void pluginsOfTheUserAreLoadedBesideTheOwn()
    {
        const QString plugins = temporaryPath("data/xy-plot-workbench/plugins");
        QVERIFY(QDir().mkpath(plugins));
        // Two of them come before the own one in text order, which is still the one that scenes are made for.
        QVERIFY(QFile::copy(FIXTURE_FOLDER "/minimal_container.so", plugins + QStringLiteral("/a.so")));
        QVERIFY(QFile::copy(FIXTURE_FOLDER "/other_interface.so", plugins + QStringLiteral("/b.so")));
        const Outcome list = run("--list-plugins");
        QCOMPARE(list.exitCode, 1);
        static const QRegularExpression pattern(QStringLiteral("^XY-Plotter .+\nMinimal .+/a.so\n$"));
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
    Outcome run(const QString &arguments, const std::function<void(QProcess &)> &meanwhile = {}) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
            environment.remove(name);
        }
        if (!m_platform.isEmpty()) {
            environment.insert("QT_QPA_PLATFORM", m_platform);
        }
        if (!m_language.isEmpty()) {
            environment.insert("LC_ALL", "en_US.UTF-8"); // of the C locale there are no languages
            environment.insert("LANGUAGE", m_language);
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
        process.start(PROGRAM, arguments.split(QLatin1Char(' ')));
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

    QString m_platform; // of Qt; empty to run without a display
    QString m_language; // as LANGUAGE lists them; empty for that of the test's environment
};

GUARDED_TEST_MAIN(CommandLineTest)
#include "CommandLineTest.moc"
