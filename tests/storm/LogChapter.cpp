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

/// In \a folder, which is made before if it is missing.
void inShell(const QString &folder, const QString &command)
{
    QProcess::execute("sh", {"-c", filled("exec >/dev/null 2>&1; mkdir -p %1; cd %1; %2", folder, command)});
}

void setNothing(bool /*isBeginning*/) {}

void setSizeLimit(bool isBeginning)
{
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = isBeginning ? 600 : limit.rlim_max;
    setrlimit(RLIMIT_FSIZE, &limit);
}

void setRights(bool isBeginning)
{
    constexpr uid_t nobody = 65534;
    [[maybe_unused]] const int result = seteuid(isBeginning ? nobody : 0);
}

/// What happens to the file in the middle of a recording, what is undone later, and what has to hold then.
struct Trouble
{
    const char *name;
    const char *begin; ///< for the shell, in the file's folder, where "log" is the file
    const char *end;
    const char *known;                          ///< what the outcome means for the person
    bool keepsHeader = false;                   ///< the file is the same one at the end
    void (*act)(bool isBeginning) = setNothing; ///< besides, in this process
};

const char lostMeanwhile[] = "lines are lost while it is there";
const char frozen[] = "file system that does not answer for 3 s (frozen)";
const char cutLine[] = "last line cut by someone else";

const Trouble troubles[] = {
    {"size limit of the process", "", "", "lines that do not fit are lost whole, their numbers are missing", true,
     setSizeLimit},
    {"file removed", "rm log", "", "goes on in a new file without a header"},
    {"file replaced by a folder", "rm log; mkdir log", "rmdir log", lostMeanwhile},
    {"file replaced by a link to /dev/full", "ln -sf /dev/full log", "rm log", lostMeanwhile},
    {"file replaced by a FIFO without a reader", "rm log; mkfifo log", "rm log",
     "lines are lost while it is there; the window goes on"},
    {"file replaced by a FIFO whose reader is stopped", "rm log; mkfifo log; exec 3<>log; sleep 60 & echo $! >reader",
     "kill $(cat reader); rm log", "lines are lost once the pipe is full; the window goes on"},
    {"folder vanishes and comes back", "rm -r $PWD", "", "lines are lost meanwhile; goes on in a new file"},
    {cutLine, "truncate -s -3 log", "", "the next line is glued to what is left", true},
    // The rest takes the rights of the system's administrator.
    {"file made read-only", "chmod 444 log", "chmod 644 log", "lines are lost meanwhile", true, setRights},
    {frozen, "(fsfreeze -f .; sleep 3; fsfreeze -u .) & sleep 0.5", "",
     "the write waits for it, and the window with it; no line is lost", true},
};

void tryTroubles(const QString &folder)
{
    std::signal(SIGXFSZ, SIG_IGN);
    const QString mounted = folder + "/mounted";
    inShell(mounted,
            filled("truncate -s 8M %1/image && mkfs.ext4 -q %1/image && mount -o loop %1/image %2", folder, mounted));
    Recorder recorder;
    for (const Trouble &trouble : troubles) {
        const bool isFrozen = trouble.name == frozen;
        const bool isCut = trouble.name == cutLine;
        if ((isFrozen && !QDir(mounted).exists("lost+found")) || (trouble.act == setRights && geteuid() != 0)) {
            Report::add({"log", trouble.name, 0, "a recording", "not tried: this takes rights that nobody has here"});
            continue;
        }
        const QString place = isFrozen ? mounted : folder + "/logs";
        QDir().mkpath(place);
        recorder.start(place + "/log");
        qint64 slowest = recorder.tick(10);
        inShell(place, trouble.begin);
        trouble.act(true);
        slowest = qMax(slowest, recorder.tick(60));
        trouble.act(false);
        inShell(place, trouble.end);
        slowest = qMax(slowest, recorder.tick(10));
        const Recorded recorded(contentOf(place + "/log"));
        const qint64 announced = recorder.announced();
        const char *const state = isCut              ? "the cut one has grown together with the next"
                                  : recorded.isWhole ? "all whole"
                                                     : "one is torn";
        Report::add({"log", trouble.name, 80, "ticks of a recording of four curves",
                     filled("%1; of %2 announced lines %3 are in the file at the end, %4; slowest tick %5 ms",
                            trouble.known, announced, recorded.lines, state, slowest),
                     slowest > (isFrozen ? 6000 : 1000) || (!recorded.isWhole && !isCut) ||
                         (trouble.keepsHeader && !recorded.hasHeader) || recorded.lines == 0 ||
                         recorded.lastNumber != announced});
        QFile::remove(place + "/log");
    }
    inShell(folder, "umount mounted");
}

/// A recording on a file system of 16 kB.
void fillDisk(const QString &folder)
{
    const QString mounted = folder + "/small";
    inShell(mounted, "mount -t tmpfs -o size=16k none . && touch ../small/ready");
    const QString on = "ticks of a recording on a file system of 16 kB, which is enlarged later";
    if (!QFile::exists(mounted + "/ready")) {
        Report::add({"log", "disk full", 0, on, "not tried: no file system could be mounted here"});
        return;
    }
    Recorder recorder;
    const QString path = mounted + "/log";
    recorder.start(path);
    recorder.tick(800);
    const Recorded full(contentOf(path));
    inShell(mounted, "mount -o remount,size=64k $PWD");
    recorder.tick(10);
    const Recorded later(contentOf(path));
    inShell(folder, "umount small");
    Report::add({"log", "disk full", 810, on,
                 filled("%1 lines, then %2, all whole, with the header; the numbers of the lost ones are missing",
                        full.lines, later.lines),
                 !full.isWhole || !later.isWhole || !later.hasHeader || later.lines != full.lines + 10 ||
                     later.lastNumber != recorder.announced()});
}

void kill(const Sizes &sizes, const QString &folder)
{
    const int count = sizes.of(20, 200);
    std::mt19937 engine(sizes.seed);
    qint64 lines = 0;
    int inFlight = 0;
    int cut = 0;
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
        const auto announced = static_cast<qint64>(process.readAllStandardOutput().count('\n'));
        QByteArray content = contentOf(path);
        // The system ends a process between two pages of what it writes, so the last line may have begun on one of them.
        if (!content.endsWith('\n') && content.size() % sysconf(_SC_PAGESIZE) == 0) {
            content.truncate(content.lastIndexOf('\n') + 1);
            ++cut;
        }
        const Recorded recorded(content);
        // A line is announced right before it is written: the last one may not have got that far.
        if (!recorded.isWhole || !recorded.hasHeader || qAbs(recorded.lines - announced) > 1 ||
            recorded.lastNumber != recorded.lines || announced == 0) {
            fault = filled("in round %1, %2 lines announced, %3 found, last number %4, whole %5", round, announced,
                           recorded.lines, recorded.lastNumber, recorded.isWhole);
        }
        lines += recorded.lines;
        inFlight += recorded.lines < announced ? 1 : 0;
    }
    const QString outcome =
        filled("%1 lines, all whole; every announced line is there, but for one that was being written, %2 times; "
               "%3 times it was cut where a page of the file ends",
               lines, inFlight, cut);
    Report::add({"log", "kill -9 at random moments", count, "processes that record as fast as they can",
                 fault.isEmpty() ? outcome : fault, !fault.isEmpty()});
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
