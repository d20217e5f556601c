#include "Reports.h"

#include "CurveSamples.h"
#include "FullPlugin.h"
#include "Goals.h"
#include "TimedApplication.h"
#include "XYPlotter.h"

#include <QEventLoop>
#include <QFile>
#include <QSaveFile>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

namespace
{

constexpr int intervalMs = 14;
constexpr double toleratedLatePercent = 1.0;
const QSize goalSize(1920, 1080);

/// How the sampling ticks of one run came.
struct Outcome
{
    double latePercent = 0.0; ///< of the ticks that came more than half an interval after they were due
    int missing = 0;          ///< ticks fewer than the clock makes in that time
    double longestMs = 0.0;   ///< for which one event held the event loop
};

/// Notes when ticks come.
class TickWatch
{
public:
    void start()
    {
        m_clock.start();
        TimedApplication::instance()->takeLongestMs();
    }

    void tick()
    {
        const double nowMs = static_cast<double>(m_clock.nsecsElapsed()) / 1e6;
        // The timer keeps to its rhythm unless a whole interval is over; then it starts anew.
        const double dueMs = m_dueMs < 0.0 ? nowMs : m_dueMs;
        const double lateMs = nowMs - dueMs;
        ++m_ticks;
        m_lateTicks += lateMs > intervalMs / 2.0 ? 1 : 0;
        m_dueMs = (lateMs < intervalMs ? dueMs : nowMs) + intervalMs;
        // Against the earliest tick: a first one that came late must not make all others look early.
        if (lateMs < 0.0) {
            m_dueMs = nowMs + intervalMs;
        }
    }

    Outcome outcome() const
    {
        const auto expected = static_cast<int>(m_clock.elapsed() / intervalMs);
        return {m_ticks == 0 ? 100.0 : 100.0 * m_lateTicks / m_ticks, qMax(0, expected - m_ticks),
                TimedApplication::instance()->takeLongestMs()};
    }

private:
    QElapsedTimer m_clock;
    double m_dueMs = -1.0;
    int m_ticks = 0;
    int m_lateTicks = 0;
};

/// A timer as the plugin's, which does nothing else.
class BareLoop : public QObject
{
public:
    explicit BareLoop(TickWatch *watch) : m_watch(watch)
    {
        startTimer(intervalMs, Qt::CoarseTimer);
    }

protected:
    void timerEvent(QTimerEvent *event) override
    {
        Q_UNUSED(event)
        m_watch->tick();
    }

private:
    TickWatch *m_watch;
};

void runFor(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

Outcome withoutPlot(int durationMs)
{
    TickWatch watch;
    const BareLoop loop(&watch);
    watch.start();
    runFor(durationMs);
    return watch.outcome();
}

Outcome withPlot(FullPlugin *plugin, int durationMs)
{
    TickWatch watch;
    plugin->onSample = [&watch] { watch.tick(); };
    plugin->setFree(true);
    watch.start();
    runFor(durationMs);
    const Outcome outcome = watch.outcome();
    plugin->setFree(false);
    plugin->onSample = [] {};
    return outcome;
}

QStringList cells(const Outcome &outcome)
{
    return {QString::number(outcome.latePercent, 'f', 1), QString::number(outcome.missing), inMs(outcome.longestMs)};
}

using Lines = QMap<QString, QStringList>; // cells by "kind;width;log"

Lines read(const QString &file)
{
    Lines lines;
    QFile source(file);
    if (source.open(QIODevice::ReadOnly)) {
        const QStringList texts = QString::fromUtf8(source.readAll()).split(QLatin1Char('\n'));
        for (const QString &text : texts) {
            const QStringList fields = text.split(QLatin1Char('\t'));
            lines.insert(fields.first(), fields.mid(1));
        }
    }
    return lines;
}

bool write(const QString &file, const Lines &lines)
{
    QSaveFile target(file);
    if (!target.open(QIODevice::WriteOnly)) {
        return false;
    }
    for (auto line = lines.cbegin(); line != lines.cend(); ++line) {
        target.write(
            (line.key() + QLatin1Char('\t') + line.value().join(QLatin1Char('\t')) + QLatin1Char('\n')).toUtf8());
    }
    return target.commit();
}

QString sizeText(const QSize &size)
{
    return QStringLiteral("%1 x %2").arg(size.width()).arg(size.height());
}

/// What all rows of the chapter have in common.
struct Chapter
{
    Lines before;
    Lines measured;
    QStringList missing;
    QStringList late;
};

QStringList measuredRow(Chapter *chapter, int kind, const QSize &size, bool withLog, int durationMs)
{
    XYPlotter root;
    // Up to the limit and not beyond: full curves are cut in half.
    FullPlugin plugin(&root, kind, size, FullPlugin::fullCurvePoints - durationMs / intervalMs - 10);
    const QTemporaryDir folder;
    if (withLog) {
        plugin.startLogOf(folder.filePath(QStringLiteral("log.csv")));
    }
    const Outcome reference = withoutPlot(durationMs);
    const Outcome outcome = withPlot(&plugin, durationMs);
    const QString name = CurveSamples::kinds().at(kind);
    const QString key = QStringLiteral("%1;%2;%3").arg(name).arg(size.width()).arg(withLog ? "log" : "");
    chapter->measured.insert(key, cells(outcome));
    if (size == goalSize && kind < CurveSamples::ordinaryKindCount) {
        const QString what = name + (withLog ? QStringLiteral(" with log") : QString());
        if (outcome.missing > 0) {
            chapter->missing.append(QStringLiteral("%1 %2").arg(what).arg(outcome.missing));
        }
        if (outcome.latePercent > reference.latePercent + toleratedLatePercent) {
            chapter->late.append(QStringLiteral("%1 %2 %").arg(what, cells(outcome).constFirst()));
        }
    }
    QStringList row = {name, sizeText(plugin.plot()->size()), withLog ? QStringLiteral("on") : QStringLiteral("off")};
    row += cells(reference);
    row += cells(outcome);
    if (!chapter->before.isEmpty()) {
        row += chapter->before.value(key, {QStringLiteral("-"), QStringLiteral("-"), QStringLiteral("-")});
    }
    return row;
}

} // namespace

QString Reports::samples(bool all, const QString &beforeFile, const QString &saveFile)
{
    const int durationMs = all ? 6000 : 2000;
    Chapter chapter;
    chapter.before = read(beforeFile);
    const QVector<QSize> sizes = all ? QVector<QSize>({QSize(600, 400), QSize(1280, 800), goalSize, QSize(3840, 2160)})
                                     : QVector<QSize>({goalSize});
    const int kinds = all ? CurveSamples::kinds().size() : CurveSamples::ordinaryKindCount;
    QString text =
        QStringLiteral(
            "The plugin in a window and an event loop for %1 s, sampling every %2 ms, with four curves that grow to "
            "%3 points. Late: the share of sampling ticks that come more than half an interval after they "
            "are due, in %. Missing: ticks fewer than the clock makes in that time. Block: the longest time "
            "for which one event holds the event loop, in ms. \"alone\" is a timer in the same event loop, "
            "without a plot.%4\n")
            .arg(durationMs / 1000)
            .arg(intervalMs)
            .arg(FullPlugin::fullCurvePoints)
            .arg(chapter.before.isEmpty() ? QString() : QStringLiteral(" \"before\" is commit 10027a1."));
    QTextStream out(stdout);
    for (const QSize &size : sizes) {
        QVector<QStringList> rows = {
            {"curves", "plot", "log", "alone: late", "missing", "block", "plot: late", "missing", "block"}};
        if (!chapter.before.isEmpty()) {
            rows.first() += {"before: late", "missing", "block"};
        }
        for (int kind = 0; kind < kinds; ++kind) {
            for (const bool withLog : {false, true}) {
                if (withLog && !all) {
                    continue;
                }
                rows.append(measuredRow(&chapter, kind, size, withLog, durationMs));
            }
        }
        const QString part = QStringLiteral("\n### Window of %1\n\n").arg(sizeText(size)) + table(rows);
        out << part;
        out.flush();
        text += part;
    }
    Goals goals;
    goals.add(QStringLiteral("no sampling tick is missing at 1920 x 1080 with ordinary curves"), chapter.missing);
    goals.add(QStringLiteral("ticks are late at most one percentage point more often than without a plot there"),
              chapter.late);
    out << goals.text();
    if (!saveFile.isEmpty() && !write(saveFile, chapter.measured)) {
        QTextStream(stderr) << saveFile << " could not be written\n";
    }
    return text + goals.text();
}
