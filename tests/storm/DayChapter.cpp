// A working day: four full curves and a recording; and how the program ends when it is asked to.

#include "Chapters.h"
#include "Harness.h"
#include "Watch.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <sys/resource.h>

namespace
{

constexpr int refreshTicks = 18;
constexpr double secondsPerHour = 3600.0;

/// Samples of each curve.
qint64 answered(const Recorder &day)
{
    return static_cast<qint64>(day.channel->statistics().answeredExchanges) / curveCount;
}

/// -1 when one is missing or not whole.
qint64 linesIn(const QString &path)
{
    const Recorded recorded(contentOf(path));
    return recorded.isWhole && recorded.hasHeader && recorded.lastNumber == recorded.lines ? recorded.lines : -1;
}

void fastDay(double hours)
{
    StormChannel::advance(0);
    const QTemporaryDir folder;
    const QString path = folder.filePath("day.csv");
    Recorder day;
    day.start(path);
    const qint64 before = answered(day);
    const auto ticks = static_cast<qint64>(hours * secondsPerHour * 1000.0 / tickMs);
    constexpr qint64 warmUpTicks = 12000; // the curves are full and were cut once
    qint64 heap = 0;
    qint64 resident = 0;
    QElapsedTimer clock;
    clock.start();
    for (qint64 tick = 1; tick <= ticks; ++tick) {
        day.tick(1);
        if (tick % refreshTicks == 0) {
            day.harness.refreshTick();
            QCoreApplication::processEvents();
        }
        if (tick == qMin(ticks, warmUpTicks)) {
            heap = Watch::heapBytes();
            resident = Watch::residentBytes();
        }
    }
    const qint64 heapGrowth = Watch::heapBytes() - heap;
    const qint64 residentGrowth = Watch::residentBytes() - resident;
    const qint64 samples = answered(day) - before;
    const qint64 lines = day.announced();
    const qint64 written = linesIn(path);
    constexpr qint64 allowedGrowth = 2 << 20; // how full the four curves are
    Report::add({"day", filled("%1 h in fast motion, in sampling ticks", hours), ticks,
                 "four full curves and a recording",
                 filled("%1 samples of each curve, %2 lines announced, %3 in the file; memory %4 kB (resident %5 kB) "
                        "more than after %6 ticks; %7 s",
                        samples, lines, written, heapGrowth / 1024, residentGrowth / 1024, qMin(ticks, warmUpTicks),
                        clock.elapsed() / 1000),
                 samples != ticks || lines != ticks || written != ticks || heapGrowth > allowedGrowth});
}

void realDay(double hours)
{
    StormChannel::advance(-1);
    const QTemporaryDir folder;
    const QString path = folder.filePath("day.csv");
    const auto seconds = static_cast<int>(hours * secondsPerHour);
    Recorder day;
    day.start(path);
    day.harness.plugin->removeEventFilter(&day.harness); // its own timers fire from now on
    QProcess pace;                                       // the loop without a plot
    pace.start(QCoreApplication::applicationFilePath(), {"child", "pace", QString::number(seconds)});
    pace.waitForReadyRead();
    pace.readLine();
    const qint64 before = answered(day);
    const qint64 heap = Watch::heapBytes();
    QTest::qWait(seconds * 1000);
    const qint64 samples = answered(day) - before;
    const qint64 growth = (Watch::heapBytes() - heap) / 1024;
    pace.waitForFinished();
    const qint64 usual = pace.readAll().trimmed().toLongLong();
    constexpr double share = 0.97;
    const qint64 lines = linesIn(path);
    Report::add({"day", "in real time, in seconds", seconds, "four curves and a recording",
                 filled("%1 samples; a timer without a plot fired %2 times meanwhile; %3 lines announced, %4 in the "
                        "file; memory %5 kB more",
                        samples, usual, day.announced(), lines, growth),
                 static_cast<double>(samples) < share * static_cast<double>(usual) || lines != day.announced()});
}

void endBySignal(const Sizes &sizes)
{
    for (const auto &[name, number] : {std::pair("TERM", SIGTERM), {"INT", SIGINT}, {"HUP", SIGHUP}}) {
        const int count = sizes.isLong ? 10 : 1;
        std::signal(number, SIG_DFL); // the program leaves ignored what was ignored when it was started
        QString fault;
        qint64 lines = 0;
        for (int round = 0; round < count && fault.isEmpty(); ++round) {
            const QTemporaryDir folder;
            QDir(folder.path()).mkpath("tmp");
            const QString log = folder.filePath("log.csv");
            const QString picture = folder.filePath("picture.png");
            QProcess program;
            program.setEnvironment(QStringList{QStringLiteral("TMPDIR=%1/tmp").arg(folder.path())} +
                                   QProcess::systemEnvironment());
            program.start(PROGRAM, {"--plugin", PLUGIN, "--scene", "four-curves", "--seconds", "600", "--log", log,
                                    "--picture", picture});
            const bool hasBegun = QTest::qWaitFor([&] { return QFileInfo(log).size() > 1500; }, 60000);
            kill(static_cast<pid_t>(program.processId()), number);
            program.waitForFinished(60000);
            lines = linesIn(log);
            const QStringList left = QDir(folder.filePath("tmp")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
            if (!hasBegun || program.exitStatus() != QProcess::NormalExit || program.exitCode() != 128 + number ||
                lines < 1 || !QFile::exists(picture) || !left.isEmpty()) {
                fault = filled("exit code %1, %2 lines, picture %3, left: %4; %5", program.exitCode(), lines,
                               QFile::exists(picture), left.join(QLatin1Char(' ')),
                               QString::fromUtf8(program.readAllStandardError().left(300)));
            }
        }
        const char *const outcome =
            "ends like closing the window: whole log, picture, nothing left in the temporary folder";
        Report::add({"day", filled("signal %1", name), count, "the program in the middle of a recording",
                     fault.isEmpty() ? outcome : fault, !fault.isEmpty()});
    }
}

} // namespace

int Chapters::pace(const QStringList &arguments)
{
    qint64 count = 0;
    QTimer timer;
    timer.setTimerType(Qt::CoarseTimer);
    QObject::connect(&timer, &QTimer::timeout, &timer, [&count] { ++count; });
    std::puts("ready");
    std::fflush(stdout);
    timer.start(tickMs);
    QTest::qWait(arguments.constFirst().toInt() * 1000);
    std::printf("%lld\n", count);
    return 0;
}

void Chapters::day(const Sizes &sizes)
{
    constexpr double workingDay = 8.0;
    constexpr double briefDay = 0.06;
    // --count: hours of the day in fast motion
    fastDay(sizes.count > 0 ? sizes.count : sizes.isLong ? workingDay : briefDay);
    if (sizes.hours > 0.0) {
        realDay(sizes.hours);
    }
    endBySignal(sizes);
}
