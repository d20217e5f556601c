// What becomes of a recording when the disk, the file or the process fails under it.

#include "Chapters.h"
#include "Harness.h"
#include "Watch.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <functional>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr uid_t nobody = 65534;
constexpr unsigned int longestSeconds = 60; // for a tick

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

struct LogState
{
    int lines = 0;       ///< with data
    int lastNumber = 0;  ///< of the last line
    bool isWhole = true; ///< every line has its end and numbers rise
    bool hasHeader = false;
};

LogState stateOf(const QByteArray &content)
{
    LogState state;
    QList<QByteArray> lines = content.split('\n');
    state.isWhole = lines.takeLast().isEmpty();
    state.hasHeader = lines.size() >= 2 && lines.at(0).startsWith("Module:;") && lines.at(1).startsWith("Counter;");
    const QList<QByteArray> dataLines = lines.mid(state.hasHeader ? 2 : 0);
    for (const QByteArray &line : dataLines) {
        const int number = line.split(';').constFirst().toInt();
        state.isWhole = state.isWhole && line.endsWith(";\r") && number > state.lastNumber;
        state.lastNumber = number;
        ++state.lines;
    }
    return state;
}

/// A plugin that records new values at every tick.
class Recorder
{
public:
    Recorder()
    {
        m_harness.open();
        StormChannel *const channel = plugIn(&m_harness.handler, "R/0", 2)->channel;
        channel->answer = [this](const Command &) { return ++m_value; };
        chooseAll(&m_harness);
        tick(2);
    }

    void start(const QString &path)
    {
        if (m_harness.logBox()->isChecked()) {
            m_harness.logBox()->click();
        }
        m_harness.startLog(path);
        announcedBefore = Watch::announcedLines();
    }

    /// Returns how long the slowest took, ms.
    qint64 tick(int count)
    {
        qint64 slowest = 0;
        for (int index = 0; index < count; ++index) {
            QElapsedTimer clock;
            clock.start();
            alarm(longestSeconds); // the signal ends the process: a tick that never ends is a fault, too
            StormChannel::advance(14);
            m_harness.sampleTick();
            alarm(0);
            slowest = qMax(slowest, clock.elapsed());
        }
        return slowest;
    }

    qint64 announcedBefore = 0;

private:
    PluginHarness m_harness{pluginRoot(), "Recorder"};
    qint32 m_value = 0;
};

void run(const QString &command)
{
    QProcess::execute("sh", {"-c", command});
}

void limitFileSize(rlim_t bytes)
{
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = bytes == 0 ? limit.rlim_max : bytes;
    setrlimit(RLIMIT_FSIZE, &limit);
}

/// What happens to the file in the middle of a recording, what is undone later, and what has to hold then.
struct Trouble
{
    const char *name;
    std::function<void(const QString &path)> begin;
    std::function<void(const QString &path)> end;
    const char *known;    ///< what the outcome means for the person
    bool keepsHeader;     ///< the file is the same one at the end
    qint64 slowestTickMs; ///< allowed
};

/// Those that only the system's administrator can cause.
QVector<Trouble> troublesByRights(const QString &folder)
{
    const auto nothing = [](const QString &) {};
    QVector<Trouble> all;
    all.append({"file made read-only",
                [](const QString &path) {
                    chmod(qPrintable(path), 0444);
                    seteuid(nobody);
                },
                [](const QString &path) {
                    seteuid(0);
                    chmod(qPrintable(path), 0644);
                },
                "lines are lost meanwhile", true, 1000});
    const QString image = folder + "/image";
    const QString mounted = folder + "/mounted";
    QDir().mkpath(mounted);
    run(QStringLiteral("(truncate -s 8M %1 && mkfs.ext4 -q %1 && mount -o loop %1 %2) >/dev/null 2>&1")
            .arg(image, mounted));
    if (QDir(mounted).exists("lost+found")) {
        all.append({"file system that does not answer for 3 s (frozen)",
                    [mounted](const QString &) {
                        QProcess::startDetached(
                            "sh", {"-c", QStringLiteral("fsfreeze -f %1; sleep 3; fsfreeze -u %1").arg(mounted)});
                        QThread::msleep(500);
                    },
                    nothing, "the write waits for it, and the window with it; no line is lost", true, 6000});
    } else {
        Report::add({"log", "file system that does not answer", 0, "a recording",
                     "not tried: no file system could be mounted here", false});
    }
    return all;
}

QVector<Trouble> troubles()
{
    const auto nothing = [](const QString &) {};
    return {
        {"size limit of the process", [](const QString &) { limitFileSize(600); },
         [](const QString &) { limitFileSize(0); }, "lines that do not fit are lost whole, their numbers are missing",
         true, 1000},
        {"file removed", [](const QString &path) { QFile::remove(path); }, nothing,
         "goes on in a new file without a header", false, 1000},
        {"file replaced by a folder",
         [](const QString &path) {
             QFile::remove(path);
             QDir().mkpath(path);
         },
         [](const QString &path) { QDir().rmdir(path); }, "lines are lost while it is there", false, 1000},
        {"file replaced by a link to /dev/full",
         [](const QString &path) {
             QFile::remove(path);
             QFile::link("/dev/full", path);
         },
         [](const QString &path) { QFile::remove(path); }, "lines are lost while it is there", false, 1000},
        {"file replaced by a FIFO without a reader",
         [](const QString &path) {
             QFile::remove(path);
             mkfifo(qPrintable(path), 0600);
         },
         [](const QString &path) { QFile::remove(path); }, "lines are lost while it is there; the window goes on",
         false, 1000},
        {"file replaced by a FIFO whose reader is stopped",
         [](const QString &path) {
             QFile::remove(path);
             mkfifo(qPrintable(path), 0600);
             open(qPrintable(path), O_RDONLY | O_NONBLOCK); // never read from
         },
         [](const QString &path) { QFile::remove(path); }, "lines are lost once the pipe is full; the window goes on",
         false, 1000},
        {"folder vanishes and comes back",
         [](const QString &path) { QDir(QFileInfo(path).path()).removeRecursively(); },
         [](const QString &path) { QDir().mkpath(QFileInfo(path).path()); },
         "lines are lost meanwhile; goes on in a new file", false, 1000},
        {"last line cut by someone else", [](const QString &path) { QFile::resize(path, QFileInfo(path).size() - 3); },
         nothing, "the next line is glued to what is left", true, 1000},
    };
}

void tryTroubles(const QString &folder)
{
    std::signal(SIGXFSZ, SIG_IGN);
    Recorder recorder;
    const QVector<Trouble> all = geteuid() == 0 ? troubles() + troublesByRights(folder) : troubles();
    for (const Trouble &trouble : all) {
        const bool isFrozen = trouble.slowestTickMs > 1000;
        const QString path = folder + (isFrozen ? "/mounted/log.csv" : "/logs/log.csv");
        QDir().mkpath(QFileInfo(path).path());
        recorder.start(path);
        qint64 slowest = recorder.tick(10);
        trouble.begin(path);
        slowest = qMax(slowest, recorder.tick(60));
        trouble.end(path);
        slowest = qMax(slowest, recorder.tick(10));
        const LogState state = stateOf(contentOf(path));
        const bool isCut = qstrcmp(trouble.name, "last line cut by someone else") == 0;
        const QStringList warnings = Watch::takeFaults();
        const qint64 announced = Watch::announcedLines() - recorder.announcedBefore;
        const bool isFault = slowest > trouble.slowestTickMs || (!state.isWhole && !isCut) ||
                             (trouble.keepsHeader && !state.hasHeader) || state.lines == 0 ||
                             state.lastNumber != announced || !warnings.isEmpty();
        Report::add(
            {"log", trouble.name, 80, "ticks of a recording of four curves",
             QStringLiteral("%1; of %2 announced lines %3 are in the file at the end, %4; slowest tick %5 ms %6")
                 .arg(trouble.known)
                 .arg(announced)
                 .arg(state.lines)
                 .arg(isCut           ? "the cut one has grown together with the next"
                      : state.isWhole ? "all whole"
                                      : "one is torn")
                 .arg(slowest)
                 .arg(warnings.join(QLatin1Char(' '))),
             isFault});
        QDir(QFileInfo(path).path()).remove("log.csv");
    }
    run(QStringLiteral("umount %1/mounted >/dev/null 2>&1").arg(folder));
}

/// A recording on a file system of 16 kB.
void fillDisk(const QString &folder)
{
    const QString mounted = folder + "/small";
    QDir().mkpath(mounted);
    run(QStringLiteral("mount -t tmpfs -o size=16k none %1 >/dev/null 2>&1 && touch %1/ready").arg(mounted));
    const QString what = "disk full";
    const QString on = "ticks of a recording on a file system of 16 kB, which is enlarged later";
    if (!QFile::exists(mounted + "/ready")) {
        Report::add({"log", what, 0, on, "not tried: no file system could be mounted here", false});
        return;
    }
    Recorder recorder;
    const QString path = mounted + "/log.csv";
    recorder.start(path);
    recorder.tick(800);
    const LogState full = stateOf(contentOf(path));
    run(QStringLiteral("mount -o remount,size=64k %1").arg(mounted));
    recorder.tick(10);
    const LogState later = stateOf(contentOf(path));
    run(QStringLiteral("umount %1").arg(mounted));
    Report::add(
        {"log", what, 810, on,
         QStringLiteral("%1 lines, then %2, all whole, with the header; the numbers of the lost ones are missing")
             .arg(full.lines)
             .arg(later.lines),
         !full.isWhole || !later.isWhole || !later.hasHeader || later.lines != full.lines + 10 ||
             later.lastNumber != Watch::announcedLines() - recorder.announcedBefore});
}

void kill(const Sizes &sizes, const QString &folder)
{
    const int count = sizes.of(20, 200);
    std::mt19937 engine(sizes.seed);
    qint64 lines = 0;
    int inFlight = 0;
    QString fault;
    for (int round = 0; round < count && fault.isEmpty(); ++round) {
        const QString path = folder + "/killed.csv";
        QFile::remove(path);
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(), {"child", "record", path});
        process.waitForReadyRead(60000); // the first line
        QThread::msleep(engine() % 60U);
        process.kill();
        process.waitForFinished();
        const QByteArray output = process.readAllStandardOutput();
        const auto announced = static_cast<int>(output.count('\n'));
        const LogState state = stateOf(contentOf(path));
        // A line is announced right before it is written: the last one may not have got that far.
        if (!state.isWhole || !state.hasHeader || state.lines < announced - 1 || state.lines > announced + 1 ||
            state.lastNumber != state.lines || announced == 0) {
            fault = QStringLiteral("in round %1, %2 lines announced, %3 found, last number %4, whole %5")
                        .arg(round)
                        .arg(announced)
                        .arg(state.lines)
                        .arg(state.lastNumber)
                        .arg(state.isWhole);
        }
        lines += state.lines;
        inFlight += state.lines < announced ? 1 : 0;
    }
    Report::add(
        {"log", "kill -9 at random moments", count, "processes that record as fast as they can",
         fault.isEmpty()
             ? QStringLiteral(
                   "%1 lines, all whole; every announced line is there, but for one that was being written, %2 times")
                   .arg(lines)
                   .arg(inFlight)
             : fault,
         !fault.isEmpty()});
}

} // namespace

int Chapters::recordLines(const QStringList &arguments)
{
    StormChannel::advance(0);
    Recorder recorder;
    Watch::setAnnouncer([](int number) {
        const QByteArray text = QByteArray::number(number) + '\n';
        [[maybe_unused]] const auto written =
            write(STDOUT_FILENO, text.constData(), static_cast<std::size_t>(text.size()));
    });
    recorder.start(arguments.constFirst());
    for (;;) {
        recorder.tick(1);
    }
}

void Chapters::log(const Sizes &sizes)
{
    StormChannel::advance(0);
    const QTemporaryDir folder;
    chmod(qPrintable(folder.path()), 0755); // for the process without rights
    tryTroubles(folder.path());
    fillDisk(folder.path());
    kill(sizes, folder.path());
}
