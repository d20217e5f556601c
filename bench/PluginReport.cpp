#include "Reports.h"

#include "CurveSamples.h"
#include "FullPlugin.h"
#include "Goals.h"
#include "XYPlotter.h"
#include "ui_XYPlotter.h"

#include "host/ExportCSV.h"

#include <QAbstractButton>
#include <QBuffer>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>

#include <ctime>

namespace
{

constexpr int curveCount = FullPlugin::curveCount;
constexpr double sampleIntervalMs = 14.0;
constexpr double toleratedRedraws = 1.2;
const QVector<QSize> &windowSizes()
{
    static const QVector<QSize> all = {QSize(900, 600), QSize(1920, 1080)};
    return all;
}

QStringList row(const QString &what, double ms, const QString &other, double otherMs)
{
    return {what, inMs(ms), other, inMs(otherMs), inTimes(otherMs / ms)};
}

/// The mean of many sampling ticks less what the channel took; one is too short to be timed alone.
double sampleTickMs(FullPlugin *plugin)
{
    constexpr int ticks = 500;
    constexpr double minimumMs = 1e-4;
    const double channelBefore = plugin->channelMs();
    const std::clock_t start = std::clock();
    for (int index = 0; index < ticks; ++index) {
        plugin->tickAnew();
    }
    const double allMs = static_cast<double>(std::clock() - start) * 1000.0 / CLOCKS_PER_SEC;
    return qMax(minimumMs, (allMs - (plugin->channelMs() - channelBefore)) / ticks);
}

/// The median of a sampling tick with new points, right after a refresh tick or another sampling tick, ms.
double singleTickMs(FullPlugin *plugin, bool isAfterRefresh)
{
    constexpr int ticks = 41;
    QVector<qint64> timesNs;
    for (int index = 0; index < ticks; ++index) {
        isAfterRefresh ? plugin->refreshTick() : plugin->tickAnew();
        QElapsedTimer timer;
        timer.start();
        plugin->tickAnew();
        timesNs.append(timer.nsecsElapsed());
    }
    std::nth_element(timesNs.begin(), timesNs.begin() + ticks / 2, timesNs.end());
    return static_cast<double>(timesNs.at(ticks / 2)) / 1e6;
}

/// Resident memory of this process, MB; 0 where the system does not say.
double residentMb()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0.0;
    }
    constexpr double pagesPerMb = 256.0;
    return file.readAll().split(' ').value(1).toDouble() / pagesPerMb;
}

template<typename Action> double wallMs(Action action)
{
    QElapsedTimer timer;
    timer.start();
    action();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

/// Clicks on "Export" with full curves, each window closed before the next.
QString exports(FullPlugin *plugin, QVector<QStringList> *rows)
{
    constexpr int clicks = 5;
    double firstMb = 0.0;
    double longestMs = 0.0;
    for (int click = 0; click < clicks; ++click) {
        longestMs = qMax(longestMs, wallMs([plugin] {
                             plugin->find<QAbstractButton>(QStringLiteral("btnExport"))->click();
                             QCoreApplication::processEvents();
                         }));
        delete plugin->window->findChild<ExportCSV *>(QStringLiteral("ExportXY"));
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        firstMb = click == 0 ? residentMb() : firstMb;
    }
    rows->append(row(QStringLiteral("export of four full curves, until its window is shown"), longestMs,
                     QStringLiteral("the sampling interval"), sampleIntervalMs));
    return QStringLiteral(
               "\nEach export of four full curves leaves %1 MB of memory behind after its window is closed.\n")
        .arg(qMax(0.0, (residentMb() - firstMb) / (clicks - 1)), 0, 'f', 1);
}

/// Which of \a rows are longer than a sampling interval, so that they delay ticks.
QString longRows(const QVector<QStringList> &rows)
{
    QStringList names;
    for (const QStringList &row : rows) {
        if (row.at(1).toDouble() > sampleIntervalMs && !names.contains(row.constFirst())) {
            names.append(row.constFirst());
        }
    }
    const QString all = names.isEmpty() ? QStringLiteral("nothing") : names.join(QStringLiteral("; "));
    return QStringLiteral("\nLonger than a sampling interval, so that ticks are missing: ") + all +
           QStringLiteral(".\n");
}

void appendLine(const QString &path)
{
    QFile file(path);
    if (file.open(QIODevice::Append)) {
        file.write("10000;-10000;10000;-10000;10000;-10000;10000;-10000;10000;\r\n");
    }
}

/// The refresh tick in windows of all sizes, until the window shows it, beside one redraw.
QStringList refreshTicks(XYPlotter *root, const Effort &effort, QVector<QStringList> *rows)
{
    QStringList failures;
    for (const QSize &size : windowSizes()) {
        for (int kind = 0; kind < CurveSamples::kinds().size(); ++kind) {
            FullPlugin full(root, kind, size);
            const Scene scene(kind, FullPlugin::fullCurvePoints, curveCount, full.plot()->size(), true, 1.0);
            // Not in turn with the painter, which leaves the caches to the one that comes next.
            const QMap<QString, double> ms =
                medianMs(QVector<Contestant>({{"tick", [&full] { full.refreshAndPaint(); }},
                                              {"redraw", [&full] { full.redrawAndPaint(); }}}),
                         effort);
            const QMap<QString, double> plain = medianMs(plainContestants(scene), effort);
            const double tickMs = ms.value(QStringLiteral("tick"));
            const double redrawMs = ms.value(QStringLiteral("redraw"));
            const QString what = QStringLiteral("refresh tick, %1, plot of %2 x %3")
                                     .arg(CurveSamples::kinds().at(kind))
                                     .arg(full.plot()->width())
                                     .arg(full.plot()->height());
            rows->append(row(what, tickMs, QStringLiteral("one redraw"), redrawMs));
            rows->append(row(what, tickMs, QStringLiteral("one drawing by the plain painter"),
                             plain.value(QStringLiteral("plain alone"))));
            if (tickMs > toleratedRedraws * redrawMs) {
                failures.append(QStringLiteral("%1: %2 of a redraw").arg(what, inTimes(tickMs / redrawMs)));
            }
        }
    }
    return failures;
}

} // namespace

QString Reports::plugin(const Effort &effort)
{
    QVector<QStringList> rows = {{"what", "ms", "compared to", "ms", "ratio"}};
    XYPlotter root;
    Goals goals;
    goals.add(
        QStringLiteral("a refresh tick with four full curves takes at most %1 times one redraw").arg(toleratedRedraws),
        refreshTicks(&root, effort, &rows));

    const QString interval = QStringLiteral("the sampling interval");
    FullPlugin full(&root, 3, windowSizes().first());
    const double silentMs = sampleTickMs(&full);
    rows.append(
        row(QStringLiteral("sampling tick, four curves, without the channel"), silentMs, interval, sampleIntervalMs));
    rows.append(row(QStringLiteral("sampling tick after a refresh tick, which copies the curves"),
                    singleTickMs(&full, true), QStringLiteral("any other sampling tick"), singleTickMs(&full, false)));
    const QTemporaryDir folder;
    if (full.startLogOf(folder.filePath(QStringLiteral("log.csv")))) {
        const QString other = folder.filePath(QStringLiteral("other.csv"));
        rows.append(row(QStringLiteral("log line of four curves"), qMax(0.0, sampleTickMs(&full) - silentMs),
                        QStringLiteral("opening a file, one line, closing"),
                        medianMs([&other] { appendLine(other); }, effort)));
    }

    FullPlugin large(&root, 3, windowSizes().last());
    const QString memory = exports(&large, &rows);
    rows.append(row(QStringLiteral("screenshot of a window of 1920 x 1080"), wallMs([&large] {
                        QBuffer buffer;
                        large.plot()->grab().save(&buffer, "PNG");
                    }),
                    interval, sampleIntervalMs));
    const auto initialise = [&root] {
        PluginHandler handler;
        QDialog dialog;
        ContainerInterface *const clone = root.clone(QStringLiteral("Bench"), &handler);
        clone->setParent(&dialog);
        clone->init(&dialog);
    };
    const auto setUpForm = [] {
        QWidget widget;
        Ui_XYPlotter ui;
        ui.setupUi(&widget);
    };
    rows.append(row(QStringLiteral("the first init, with making and destroying"), medianMs(initialise, effort),
                    QStringLiteral("making and destroying the form alone"), medianMs(setUpForm, effort)));
    QString text = QStringLiteral("Four full curves. A refresh tick and a redraw include the painting of the "
                                  "window. Ratios below 1 are in favour of the right side.\n\n") +
                   table(rows) + longRows(rows) + memory + goals.text();
    QTextStream(stdout) << "\n### The plugin\n\n" << text;
    return text;
}
