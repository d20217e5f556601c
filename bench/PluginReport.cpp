#include "Reports.h"

#include "CurveSamples.h"
#include "ScriptedCurve.h"
#include "XYPlotter.h"
#include "ui_XYPlotter.h"

#include <QCheckBox>
#include <QFile>
#include <QFileDialog>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

#include <ctime>

namespace
{

constexpr int curveCount = 4;
constexpr int fullCurvePoints = 10000;
constexpr double sampleIntervalMs = 14.0;
constexpr QSize plotSize(600, 400);

/// The plugin with four curves that follow samples of one kind.
class FullPlugin : public ScriptedCurve
{
public:
    FullPlugin(ContainerInterface *root, int kind) : ScriptedCurve(root)
    {
        // Every tick asks for X and Y of one curve after the other.
        module->channel.answer = [this](const Command &) {
            const QPointF point = points.at(request / 2);
            return static_cast<qint32>(request++ % 2 == 0 ? point.x() : point.y());
        };
        points.fill(QPointF(), curveCount);
        for (int index = 1; index < curveCount; ++index) {
            chooseBoth(index);
            curveBox(index)->click();
        }
        window->resize(window->size() + plotSize - plot()->size());
        QCoreApplication::processEvents();
        QVector<QVector<QPointF>> curves;
        for (int index = 0; index < curveCount; ++index) {
            curves.append(CurveSamples::curve(kind, fullCurvePoints, index));
        }
        // The first points open the range: it only follows the latest at each refresh.
        for (const double corner : {-CurveSamples::extent, CurveSamples::extent}) {
            points.fill(QPointF(corner, corner));
            tick();
            refreshTick();
        }
        for (int sample = 2; sample < fullCurvePoints; ++sample) {
            for (int index = 0; index < curveCount; ++index) {
                points[index] = curves.at(index).at(sample);
            }
            tick();
        }
    }

    void tick()
    {
        request = 0;
        sampleTick();
        module->channel.exchanges.clear();
    }

    /// A tick with new points.
    void tickAnew()
    {
        for (QPointF &point : points) {
            point.rx() = point.x() > 0.0 ? point.x() - 1.0 : point.x() + 1.0;
        }
        tick();
    }

    double channelMs() const
    {
        return static_cast<double>(module->channel.statistics().totalDurationNs) / 1e6;
    }

    bool startLog(const QString &path) const
    {
        QTimer::singleShot(0, [&] {
            auto *const dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            if (dialog != nullptr) {
                dialog->selectFile(path);
                static_cast<QDialog *>(dialog)->done(QDialog::Accepted);
            }
        });
        find<QCheckBox>("cbLog")->click();
        return QFile::exists(path);
    }

    QVector<QPointF> points;
    int request = 0;
};

QStringList row(const QString &what, double ms, const QString &other, double otherMs)
{
    return {what, inMs(ms), other, inMs(otherMs), inTimes(otherMs / ms)};
}

/// The mean of many sampling ticks less what the channel took; one is too short to be timed alone.
double sampleTickMs(FullPlugin *plugin)
{
    constexpr int ticks = 500;
    const double channelBefore = plugin->channelMs();
    const std::clock_t start = std::clock();
    for (int index = 0; index < ticks; ++index) {
        plugin->tickAnew();
    }
    const double allMs = static_cast<double>(std::clock() - start) * 1000.0 / CLOCKS_PER_SEC;
    return (allMs - (plugin->channelMs() - channelBefore)) / ticks;
}

void appendLine(const QString &path)
{
    QFile file(path);
    if (file.open(QIODevice::Append)) {
        file.write("10000;-10000;10000;-10000;10000;-10000;10000;-10000;10000;\r\n");
    }
}

} // namespace

QString Reports::plugin(const Effort &effort)
{
    QVector<QStringList> rows = {{"what", "ms", "compared to", "ms", "ratio"}};
    XYPlotter root;
    const QString interval = QStringLiteral("the sampling interval");
    for (int kind = 0; kind < CurveSamples::kinds().size(); ++kind) {
        FullPlugin full(&root, kind);
        const Scene scene(kind, fullCurvePoints, curveCount, full.plot()->size(), true, 1.0);
        const QMap<QString, double> ms = medianMs(
            plainContestants(scene) + QVector<Contestant>({{"tick", [&full] { full.refreshTick(); }}}), effort);
        const double tickMs = ms.value(QStringLiteral("tick"));
        const QString what = QStringLiteral("refresh tick, four full curves, ") + CurveSamples::kinds().at(kind);
        rows.append(row(what, tickMs, interval, sampleIntervalMs));
        rows.append(row(what, tickMs, QStringLiteral("four drawings by the plain painter"),
                        curveCount * ms.value(QStringLiteral("plain alone"))));
    }

    FullPlugin full(&root, 3);
    const double silentMs = sampleTickMs(&full);
    rows.append(
        row(QStringLiteral("sampling tick, four curves, without the channel"), silentMs, interval, sampleIntervalMs));
    const QTemporaryDir folder;
    if (full.startLog(folder.filePath(QStringLiteral("log.csv")))) {
        const QString other = folder.filePath(QStringLiteral("other.csv"));
        rows.append(row(QStringLiteral("log line of four curves"), qMax(0.0, sampleTickMs(&full) - silentMs),
                        QStringLiteral("opening a file, one line, closing"),
                        medianMs([&other] { appendLine(other); }, effort)));
    }

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
    QString text =
        QStringLiteral("The plot is %1 x %2 pixels.\n\n").arg(plotSize.width()).arg(plotSize.height()) + table(rows);
    QTextStream(stdout) << "\n### The plugin\n\n" << text;
    return text;
}
