#include "GuardedTest.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>

/// The built program with the real plugin, run as a person without a display would.
class CommandLineTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void mistakeEndsInOneLineAndLeavesNothing_data();
    void mistakeEndsInOneLineAndLeavesNothing();
    void helpAndScenesAreListed();
    void sceneLeavesItsPicture_data();
    void sceneLeavesItsPicture();
    void sameCommandRecordsTheSameLines();
    void germanIsSpokenOnRequest();
    void selfTestTellsWhatFails_data();
    void selfTestTellsWhatFails();
    void pluginsOfTheUserAreLoadedBesideTheOwn();
    void sceneOfOnesOwnIsNotTakenAtItsWord();

private:
    struct Outcome
    {
        int exitCode = -1;
        QString output;
        QStringList errors; // lines
    };
    QString folder() const; // where the program is started
    Outcome run(const QStringList &arguments) const;
    QStringList leftBehind() const;
    QString writeFile(const char *name, const QByteArray &text) const;
};

namespace
{

constexpr int longestRunMs = 60000;

/// Pixels of about \a colour in the middle of the plot, where neither tables nor legend are.
int countInPlot(const QImage &image, const QColor &colour)
{
    int count = 0;
    for (int y = image.height() / 5; y < image.height() * 4 / 5; ++y) {
        for (int x = image.width() * 3 / 5; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            const int hueDistance = qAbs(pixel.hue() - colour.hue()) % 360;
            if (pixel.saturation() > 100 && qMin(hueDistance, 360 - hueDistance) < 12) {
                ++count;
            }
        }
    }
    return count;
}

} // namespace

QString CommandLineTest::folder() const
{
    QString path = temporaryPath(QStringLiteral("work"));
    QDir().mkpath(path);
    return path;
}

CommandLineTest::Outcome CommandLineTest::run(const QStringList &arguments) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        environment.remove(QString::fromLatin1(name));
    }
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), temporaryPath(QStringLiteral("config")));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), temporaryPath(QStringLiteral("data")));
    environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("default.info=false")); // of the fixtures
    if (arguments.contains(QStringLiteral("--log")) || arguments.contains(QStringLiteral("--self-test"))) {
        // Under a leak checker: what the plugin keeps for good is known by whole stacks only, which take their time.
        environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("fast_unwind_on_malloc=0"));
    }
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder());
    process.start(QStringLiteral(PROGRAM), arguments);
    if (!process.waitForFinished(longestRunMs) || process.exitStatus() != QProcess::NormalExit) {
        return {-1, {}, {process.errorString()}};
    }
    QStringList errors = QString::fromLocal8Bit(process.readAllStandardError()).split(QLatin1Char('\n'));
    errors.removeAll(QString());
    return {process.exitCode(), QString::fromLocal8Bit(process.readAllStandardOutput()), errors};
}

QStringList CommandLineTest::leftBehind() const
{
    return QDir(folder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

QString CommandLineTest::writeFile(const char *name, const QByteArray &text) const
{
    QString path = temporaryPath(QString::fromLatin1(name));
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() ? path : QString();
}

void CommandLineTest::mistakeEndsInOneLineAndLeavesNothing_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("fragment");

    const auto row = [](const char *name, const char *arguments, int exitCode, const char *fragment) {
        QTest::newRow(name) << QString::fromLatin1(arguments).split(QLatin1Char(' ')) << exitCode
                            << QString::fromLatin1(fragment);
    };
    row("unknown option", "--colour", 2, "colour");
    row("bad number", "--seconds soon", 2, "\"soon\"");
    row("unknown scene", "--scene sphere", 2, "circle");
    row("no plugin file", "--plugin absent.so", 1, "absent.so");
    row("plugin without the widgets", "--plugin " FIXTURE_FOLDER "/minimal_container.so --seconds 1", 1,
        "RadioButtonFrame");
    row("no folder for the picture", "--picture absent/plot.png", 1, "absent/plot.png");
    row("no folder for the log", "--log absent/run.csv", 1, "absent/run.csv");
    row("log that cannot be opened", "--log /proc/run.csv --seconds 1", 1, "run.csv could not be opened");
    row("too small a picture", "--size 20x20 --seconds 1", 1, "20x20");
}

void CommandLineTest::mistakeEndsInOneLineAndLeavesNothing()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, fragment);
    const Outcome outcome = run(arguments);
    QCOMPARE(outcome.exitCode, exitCode);
    QVERIFY2(outcome.errors.size() == 1, qPrintable(outcome.errors.join(QLatin1Char('\n'))));
    QVERIFY2(outcome.errors.constFirst().contains(fragment), qPrintable(outcome.errors.constFirst()));
    QCOMPARE(leftBehind(), QStringList());
}

void CommandLineTest::helpAndScenesAreListed()
{
    const Outcome help = run({QStringLiteral("--help")});
    QCOMPARE(help.exitCode, 0);
    for (const char *option : {"--scene", "--seconds", "--picture", "--list-scenes", "--help", "--plugin", "--size",
                               "--seed", "--palette", "--settings", "--log", "--language", "--self-test"}) {
        QVERIFY2(help.output.contains(QString::fromLatin1(option)), option);
    }
    const Outcome list = run({QStringLiteral("--list-scenes")});
    QCOMPARE(list.exitCode, 0);
    QVERIFY(list.output.contains(QStringLiteral("four-curves")));
}

void CommandLineTest::sceneLeavesItsPicture_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("curves");

    QTest::newRow("nothing asked for") << QStringLiteral("--seconds 2") << QSize(1000, 600) << 1;
    QTest::newRow("four curves") << QStringLiteral("--seconds 2 --scene four-curves --size 900x500 --palette dark")
                                 << QSize(900, 500) << 4;
    QTest::newRow("register field") << QStringLiteral("--seconds 1 --scene phase --seed 9") << QSize(1000, 600) << 1;
    QTest::newRow("two modules") << QStringLiteral("--seconds 1 --scene two-modules") << QSize(1000, 600) << 1;
}

void CommandLineTest::sceneLeavesItsPicture()
{
    QFETCH(QString, arguments);
    QFETCH(QSize, size);
    QFETCH(int, curves);
    const Outcome outcome = run(arguments.split(QLatin1Char(' ')));
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors.join(QLatin1Char('\n'))));
    QCOMPARE(outcome.errors, QStringList());
    QVERIFY(outcome.output.contains(QStringLiteral("no display")));
    QVERIFY(outcome.output.contains(folder() + QStringLiteral("/xy-plot.png")));
    QCOMPARE(leftBehind(), QStringList(QStringLiteral("xy-plot.png")));
    QVERIFY2(!QDir(temporaryPath(QStringLiteral("config"))).exists(), "the user's settings were touched");

    const QImage image(folder() + QStringLiteral("/xy-plot.png"));
    QCOMPARE(image.size(), size);
    const QList<QColor> colours = {QColor(220, 20, 60), QColor(255, 215, 0), QColor(30, 144, 255), QColor(50, 205, 50)};
    for (int curve = 0; curve < colours.size(); ++curve) {
        const int pixels = countInPlot(image, colours.at(curve));
        QVERIFY2(curve < curves ? pixels > 50 : pixels == 0,
                 qPrintable(QStringLiteral("curve %1 has %2 pixels").arg(curve).arg(pixels)));
    }
}

void CommandLineTest::sameCommandRecordsTheSameLines()
{
    const QString path = folder() + QStringLiteral("/run.csv");
    QList<QByteArray> earlier;
    for (int attempt = 0; attempt < 2; ++attempt) { // the second one overwrites
        const Outcome outcome =
            run(QStringLiteral("--scene four-curves --seconds 1 --log run.csv").split(QLatin1Char(' ')));
        QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors.join(QLatin1Char('\n'))));
        QCOMPARE(outcome.errors, QStringList());
        QCOMPARE(leftBehind(), QStringList(QStringLiteral("run.csv")));
        QVERIFY2(!QDir(temporaryPath(QStringLiteral("config"))).exists(), "the user's settings were touched");

        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QList<QByteArray> lines = file.readAll().split('\n');
        QCOMPARE(lines.takeLast(), QByteArray());
        QVERIFY(lines.size() > 12);
        QVERIFY(lines.at(0).startsWith("Module:;") && lines.at(1).startsWith("Counter;"));
        for (int i = 0; i < lines.size(); ++i) {
            QVERIFY(lines.at(i).endsWith(";\r"));
            QCOMPARE(lines.at(i).count(';'), 9); // a column per value from the first line on, as in the header
            QVERIFY(i < 2 || lines.at(i).startsWith(QByteArray::number(i - 1) + ';'));
        }
        QVERIFY(outcome.output.contains(
            QStringLiteral("Lines recorded: %1; the log is %2\n").arg(lines.size() - 2).arg(path)));
        if (attempt == 0) {
            earlier = lines;
            continue;
        }
        const int common = qMin(lines.size(), earlier.size());
        QCOMPARE(lines.mid(0, common), earlier.mid(0, common));
    }
}

void CommandLineTest::germanIsSpokenOnRequest()
{
    const Outcome outcome =
        run({QStringLiteral("--language"), QStringLiteral("de"), QStringLiteral("--seconds"), QStringLiteral("0")});
    QCOMPARE(outcome.exitCode, 2);
    QVERIFY2(outcome.errors.join(QString()).contains(QStringLiteral("erwartet wird eine Zahl größer als 0")),
             qPrintable(outcome.errors.join(QString())));
}

void CommandLineTest::selfTestTellsWhatFails_data()
{
    QTest::addColumn<QString>("plugins");
    QTest::addColumn<QString>("failure");

    QTest::newRow("nothing") << QString() << QString();
    QTest::newRow("no plugin file") << QStringLiteral("absent.so") << QStringLiteral("absent.so: there is no such");
    QTest::newRow("broken plugin file") << QStringLiteral(FIXTURE_FOLDER "/missing_symbol.so")
                                        << QStringLiteral("definedNowhere");
    QTest::newRow("container that shows nothing")
        << QStringLiteral(PLUGIN " " FIXTURE_FOLDER "/minimal_container.so") << QStringLiteral("\"Minimal\" opens");
}

void CommandLineTest::selfTestTellsWhatFails()
{
    QFETCH(QString, plugins);
    QFETCH(QString, failure);
    QStringList arguments = {QStringLiteral("--self-test")};
    const QStringList files = plugins.isEmpty() ? QStringList() : plugins.split(QLatin1Char(' '));
    for (const QString &file : files) {
        arguments << QStringLiteral("--plugin") << file;
    }
    const Outcome outcome = run(arguments);
    const QStringList failed =
        outcome.output.split(QLatin1Char('\n')).filter(QRegularExpression(QStringLiteral("^FAIL")));
    QVERIFY2(failed.size() == (failure.isEmpty() ? 0 : 1), qPrintable(outcome.output));
    QVERIFY2(failure.isEmpty() || failed.constFirst().contains(failure), qPrintable(outcome.output));
    QCOMPARE(outcome.exitCode, failure.isEmpty() ? 0 : 1);
    QVERIFY(!failure.isEmpty() || outcome.output.count(QRegularExpression(QStringLiteral("(^|\n)ok "))) > 8);
    QCOMPARE(leftBehind(), QStringList());
}

void CommandLineTest::pluginsOfTheUserAreLoadedBesideTheOwn()
{
    const QString folder = temporaryPath(QStringLiteral("data/xy-plot-workbench/plugins"));
    QVERIFY(QDir().mkpath(folder));
    // Two of them come before the own one in text order, which is still the one that scenes are made for.
    QVERIFY(QFile::copy(QStringLiteral(FIXTURE_FOLDER "/minimal_container.so"), folder + QStringLiteral("/a.so")));
    QVERIFY(QFile::copy(QStringLiteral(FIXTURE_FOLDER "/tool_plugin.so"), folder + QStringLiteral("/b.so")));
    const Outcome list = run({QStringLiteral("--list-plugins")});
    QCOMPARE(list.exitCode, 1);
    const QStringList lines = list.output.split(QLatin1Char('\n'));
    QVERIFY2(lines.size() == 3 && lines.at(0).startsWith(QStringLiteral("XY-Plotter ")) &&
                 lines.at(1).startsWith(QStringLiteral("Minimal ")) && lines.at(1).endsWith(QStringLiteral("/a.so")),
             qPrintable(list.output));

    const Outcome scene = run({QStringLiteral("--seconds"), QStringLiteral("1")});
    QVERIFY(QDir(folder).removeRecursively());
    QCOMPARE(scene.exitCode, 0); // without the broken one, of which it complains
    QVERIFY2(scene.errors.size() == 1 && scene.errors.constFirst().contains(QStringLiteral("b.so: ")),
             qPrintable(scene.errors.join(QLatin1Char('\n'))));
}

void CommandLineTest::sceneOfOnesOwnIsNotTakenAtItsWord()
{
    const QByteArray scene = R"({ "title": "T", "modules": [ { "kind": "stepper-3", "key": "S" } ], "curves": [
        { "x": { "module": "S", "motor": "Axis 0", "value": "Actual position [microsteps]" },
          "y": { "module": "S", "motor": "Axis 7", "value": "Actual position [microsteps]" } } ] })";
    const auto complaint = [this](const QByteArray &text) {
        const Outcome outcome = run({QStringLiteral("--scene"), writeFile("scene.json", text)});
        return outcome.exitCode == 1 && outcome.errors.size() == 1 ? outcome.errors.constFirst() : QString();
    };
    QVERIFY(complaint(scene).contains(QStringLiteral("no motor \"Axis 7\"")));
    QVERIFY(complaint(QByteArray(scene)
                          .replace("Axis 7", "Axis 1")
                          .replace("Actual position [microsteps]\" } } ]", "Shoe size\" } } ]"))
                .contains(QStringLiteral("no value \"Shoe size\"")));
    QVERIFY(complaint(QByteArray(scene).replace("\"motor\": \"Axis 7\"", "\"signed\": true, \"motor\": \"Axis 1\""))
                .contains(QStringLiteral("cannot be read as signed")));
    QVERIFY(complaint("{").contains(QStringLiteral("scene.json:1")));
    QCOMPARE(leftBehind(), QStringList());
}

GUARDED_TEST_MAIN(CommandLineTest)
#include "CommandLineTest.moc"
