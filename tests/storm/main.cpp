// storm [--long] [--seed N] [--count N] [--hours H] [--version V --save FILE] CHAPTER...
// storm document FILE
// Breaks the plugin on purpose; see Report.cpp. The exit code is 1 when anything has gone wrong.

#include "Chapters.h"
#include "GuardedTest.h"
#include "Watch.h"

#include "host/AppSettings.h"

#include <QCommandLineParser>
#include <QDesktopServices>
#include <QProcess>

#include <cstdio>

namespace
{

constexpr std::pair<const char *, Chapters::Chapter *> chapters[] = {
    {"events", Chapters::events}, {"hotplug", Chapters::hotplug}, {"slow", Chapters::slow}, {"log", Chapters::log},
    {"life", Chapters::life},     {"files", Chapters::files},     {"day", Chapters::day},
};

/// In a process of its own: a crash is a row of the report, and the other chapters run.
void runInChild(const QString &name, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), arguments + QStringList{"--here", name});
    while (process.waitForReadyRead(-1) || process.canReadLine()) {
        while (process.canReadLine()) {
            Report::add(Report::row(QString::fromUtf8(process.readLine())));
        }
    }
    process.waitForFinished(-1);
    if (process.exitStatus() == QProcess::CrashExit || process.exitCode() > 1) {
        Report::add({name, "the whole chapter", 1, QString(), filled("ended with %1", process.exitCode()), true});
    }
}

int runChapters()
{
    QCommandLineParser parser;
    parser.addOptions({{"long", ""},
                       {"here", "in this process"},
                       {"seed", "", "number", "1"},
                       {"count", "", "number", "0"},
                       {"hours", "", "number", "0"},
                       {"version", "of the program, for the rows", "text"},
                       {"save", "", "file of rows"}});
    parser.addPositionalArgument("chapter", "", "CHAPTER...");
    parser.process(*qApp);
    const Sizes sizes{parser.isSet("long"), parser.value("seed").toUInt(), parser.value("hours").toDouble(),
                      parser.value("count").toInt()};
    Report::setFile(parser.value("save"), parser.value("version"));
    QStringList arguments{"--seed",  parser.value("seed"), "--hours", parser.value("hours"),
                          "--count", parser.value("count")};
    arguments += parser.isSet("long") ? QStringList("--long") : QStringList();
    QStringList names = parser.positionalArguments();
    const bool isAll = names.isEmpty();
    for (const auto &[name, run] : chapters) {
        if (names.removeAll(name) == 0 && !isAll) {
            continue;
        }
        if (parser.isSet("here")) {
            run(sizes);
        } else {
            Report::begin(name);
            runInChild(name, arguments);
        }
    }
    if (!names.isEmpty()) {
        std::fprintf(stderr, "storm: there is no chapter %s\n", qPrintable(names.join(", ")));
        return 2;
    }
    return Report::hasFault() ? 1 : 0;
}

} // namespace

int Chapters::child(const QStringList &arguments)
{
    const QMap<QString, ChildTask *> tasks{
        {"events", playEvents}, {"pace", pace}, {"read", readFile}, {"record", recordLines}};
    return tasks.contains(arguments.constFirst()) ? tasks.value(arguments.constFirst())(arguments.mid(1)) : 2;
}

Ended runChild(const QStringList &arguments, int timeoutMs, const QStringList &environment)
{
    QProcess process;
    QElapsedTimer clock;
    clock.start();
    process.setEnvironment(environment + QProcess::systemEnvironment());
    process.start(QCoreApplication::applicationFilePath(), QStringList{"child"} + arguments);
    Ended ended;
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished();
    }
    ended.isCrash = process.exitStatus() == QProcess::CrashExit;
    ended.exitCode = process.exitCode();
    ended.output = process.readAllStandardOutput();
    ended.errors = process.readAllStandardError().right(6000);
    ended.milliseconds = clock.elapsed();
    return ended;
}

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (!qEnvironmentVariableIsSet("QT_SCALE_FACTOR")) {
        qputenv("QT_SCALE_FACTOR", "1");
    }
    const QTemporaryDir home;
    for (const char *const name : {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"}) {
        qputenv(name, home.path().toLocal8Bit());
    }
    QApplication application(argc, argv);
    prepareTestApplication();
    QApplication::setQuitOnLastWindowClosed(false);
    QDir::setCurrent(home.path());
    AppSettings::setStoreFile(home.filePath("settings.ini"));
    AppSettings().setValue("Pictures/Folder", home.filePath("pictures"));
    QDesktopServices::setUrlHandler("file", qApp, "nothing"); // opens no other program
    Watch::install();
    const QStringList arguments = QApplication::arguments().mid(1);
    if (arguments.value(0) == "child") {
        return Chapters::child(arguments.mid(1));
    }
    if (arguments.value(0) == "document") {
        std::fputs(Report::document(arguments.value(1)).toUtf8().constData(), stdout);
        return 0;
    }
    return runChapters();
}
