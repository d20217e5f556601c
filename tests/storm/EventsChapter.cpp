// Random events: series of them in processes of their own, so that a crash is seen, and can be shortened.

#include "Chapters.h"
#include "Harness.h"
#include "Player.h"
#include "Watch.h"

#include <QElapsedTimer>
#include <QFile>
#include <QLocale>
#include <QTemporaryDir>
#include <QTextStream>

#include <array>
#include <cstdio>
#include <fcntl.h>
#include <future>
#include <unistd.h>

namespace
{

constexpr quint32 deviceSeries = 4; // one series in so many has devices on faulty lines; the others replay exactly
constexpr int seriesTimeoutMs = 60 * 60 * 1000;
constexpr int faultCode = 3;

struct Series
{
    QString host;
    quint32 seed = 0;
    int events = 0;

    QStringList environment() const
    {
        const char *const ratios[] = {"1", "1.5", "2"};
        return {filled("QT_SCALE_FACTOR=%1", ratios[seed % 3U])};
    }
};

/// What the series in one host have come to.
struct Outcome
{
    static constexpr std::size_t countNumber = 7;
    qint64 played = 0;
    std::array<qint64, countNumber> counts{};
    QString fault;
};

void writeOps(const QString &path, const QVector<Op> &ops)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        for (const Op &op : ops) {
            file.write(Player::describe(op).toUtf8() + '\n');
        }
    }
}

QVector<Op> readOps(const QString &path)
{
    QVector<Op> ops;
    const QList<QByteArray> lines = contentOf(path).split('\n');
    for (const QByteArray &line : lines) {
        const QList<QByteArray> words = line.split(' ');
        if (words.size() >= 4) {
            ops.append({words.at(0).toInt(), words.at(1).toUInt(), words.at(2).toUInt(), words.at(3).toUInt()});
        }
    }
    return ops;
}

Ended playInChild(const Series &series, const QString &folder, const QVector<Op> *ops)
{
    const QString opFile = folder + "/events";
    QStringList arguments{"events", series.host, folder, QString::number(series.seed), QString::number(series.events)};
    if (ops != nullptr) {
        writeOps(opFile, *ops);
        arguments.append(opFile);
    }
    return runChild(arguments, seriesTimeoutMs, series.environment());
}

bool isFault(const Ended &ended)
{
    return ended.isCrash || ended.exitCode != 0;
}

/// Leaves out parts, from halves down to single events, for as long as the rest still ends in a fault.
QVector<Op> shortened(const Series &series, const QString &folder, QVector<Op> ops)
{
    constexpr qint64 budgetMs = 5 * 60 * 1000;
    QElapsedTimer clock;
    clock.start();
    for (int part = ops.size() / 2; part >= 1; part /= 2) {
        for (int begin = 0; begin < ops.size() && clock.elapsed() < budgetMs;) {
            QVector<Op> fewer = ops;
            fewer.remove(begin, qMin(part, ops.size() - begin));
            if (!fewer.isEmpty() && isFault(playInChild(series, folder, &fewer))) {
                ops = fewer;
            } else {
                begin += part;
            }
        }
    }
    return ops;
}

QString explained(const Series &series, const QString &folder, const Ended &ended)
{
    QVector<Op> ops = Player::makeOps(series.seed, series.events);
    QFile progress(folder + "/progress");
    int last = ops.size() - 1;
    if (progress.open(QIODevice::ReadOnly)) {
        progress.read(reinterpret_cast<char *>(&last), sizeof last);
    }
    ops.resize(qMin(last + 1, ops.size()));
    const int all = ops.size();
    ops = shortened(series, folder, ops);
    const Ended again = playInChild(series, folder, &ops);
    QTextStream out(stderr);
    out << "\nSeed " << series.seed << ", " << series.host << ", event " << last << ": "
        << (ended.isCrash ? filled("signal %1", ended.exitCode) : QString::fromUtf8(ended.output.trimmed())) << "\n"
        << again.output << again.errors << "\n"
        << ops.size() << " of " << all << " events show it; " << series.environment().constFirst()
        << " storm child events " << series.host << " FOLDER " << series.seed << " 0 FILE, with FILE:\n";
    for (const Op &op : qAsConst(ops)) {
        out << Player::describe(op) << "\n";
    }
    return filled("seed %1, %2 events show it", series.seed, ops.size());
}

/// \a total events in one host after the other, until something goes wrong.
Outcome playAll(const QString &host, quint32 firstSeed, int total, int eventsPerSeries)
{
    Outcome outcome;
    Series series{host, firstSeed, 0};
    for (int left = total; left > 0 && outcome.fault.isEmpty(); left -= eventsPerSeries) {
        series.events = qMin(eventsPerSeries, left);
        const QTemporaryDir folder;
        const Ended ended = playInChild(series, folder.path(), nullptr);
        outcome.fault = isFault(ended) ? explained(series, folder.path(), ended) : QString();
        outcome.played += series.events;
        const QList<QByteArray> words = ended.output.split('\n').constFirst().split(' ');
        for (std::size_t index = 0; index < outcome.counts.size(); ++index) {
            outcome.counts.at(index) += words.value(static_cast<int>(index)).toLongLong();
        }
        ++series.seed;
    }
    return outcome;
}

QString describe(const Outcome &outcome)
{
    QString text =
        "no crash, no warning, no invariant broken; %1 timer events, %2 dialogs, %3 lines recorded and found "
        "whole, %4 pictures equal to one drawn from scratch, objects counted %5 times: none left; %6 "
        "requests reached devices behind faulty lines, %7 faults happened to the answers";
    for (const qint64 count : outcome.counts) {
        text = text.arg(QLocale::c().toString(count));
    }
    return text;
}

} // namespace

int Chapters::playEvents(const QStringList &arguments)
{
    const QString &folder = arguments.at(1);
    const int progress = open(qPrintable(folder + "/progress"), O_RDWR | O_CREAT | O_TRUNC, 0600);
    const QVector<Op> ops = arguments.size() > 4 ? readOps(arguments.at(4))
                                                 : Player::makeOps(arguments.at(2).toUInt(), arguments.at(3).toInt());
    const QTemporaryDir files(folder + "/run-XXXXXX");
    StormChannel::advance(0);
    QString problem;
    {
        const std::unique_ptr<StormHost> host = StormHost::make(arguments.at(0));
        const quint32 seed = arguments.at(2).toUInt();
        Player player(host.get(), files.path(), seed % deviceSeries == 0U);
        problem = player.play(ops, progress);
        const Player::Counts &counts = player.counts();
        std::printf("%lld %lld %lld %lld %lld %lld %lld\n%s\n", counts.ticks, counts.dialogs, counts.lines,
                    counts.pictures, counts.leakChecks, counts.deviceRequests, counts.deviceFaults,
                    qPrintable(problem));
    }
    close(progress);
    return problem.isEmpty() ? 0 : faultCode;
}

void Chapters::events(const Sizes &sizes)
{
    const int total = sizes.of(20000, 1000000) / 2;
    const int seriesEvents = sizes.isLong ? 10000 : 5000; // in one process
    const quint32 firstSeed = sizes.seed * 1000U;
    const auto lastSeed = firstSeed + static_cast<quint32>((total - 1) / seriesEvents);
    const QString tried = filled("random events, seeds %1 to %2, devices on faulty lines with every %3th", firstSeed,
                                 lastSeed, deviceSeries);
    auto bare = std::async(std::launch::async, playAll, "bare", firstSeed, total, seriesEvents);
    const Outcome workbench = playAll("workbench", firstSeed, total, seriesEvents);
    const auto report = [&tried](const Outcome &outcome, const char *on) {
        Report::add({"events", tried, outcome.played, on, outcome.fault.isEmpty() ? describe(outcome) : outcome.fault,
                     !outcome.fault.isEmpty()});
    };
    report(workbench, "two containers in the workbench's main window");
    report(bare.get(), "two containers in bare windows, destroyed and made anew at any moment");
}
