#include "Reports.h"

#include "CurveSamples.h"
#include "Plotter.h"

#include "host/BasicTools.h"
#include "host/DynamicProperty.h"

#include <QCheckBox>
#include <QTextStream>

namespace
{

constexpr double pictureUnitMs = 0.001; // the plot labels whole numbers only
const QVector<int> pointCounts = {10, 100, 1000, 2500, 5000, 10000};
const QVector<int> curveCounts = {1, 2, 3, 4};

struct Window
{
    QSize size;
    QString name;
};

const QVector<Window> &windows()
{
    static const QVector<Window> all = {{QSize(300, 200), QStringLiteral("300 x 200")},
                                        {QSize(600, 400), QStringLiteral("600 x 400")},
                                        {QSize(1920, 1080), QStringLiteral("1920 x 1080")},
                                        {QSize(3840, 2160), QStringLiteral("3840 x 2160")}};
    return all;
}

/// One curve per window: microseconds over points.
void draw(const QVector<QVector<QPointF>> &curves, const QString &what, const QString &file)
{
    Plotter plotter(curves.size());
    QPalette palette;
    palette.setColor(QPalette::Shadow, QColor(32, 34, 38));
    palette.setColor(QPalette::Dark, QColor(48, 50, 54));
    palette.setColor(QPalette::Light, QColor(205, 205, 205));
    plotter.setPalette(palette);
    plotter.resize(900, 500);
    PlotSettings settings;
    settings.maxX = pointCounts.last();
    settings.maxY = 0.0;
    for (int index = 0; index < curves.size(); ++index) {
        QAbstractButton *const box = plotter.curveButtons.button(index);
        box->setChecked(true);
        box->setProperty(DynamicProperty::CaptureY, QString(windows().at(index).name + QStringLiteral("  ")));
        box->setProperty(DynamicProperty::CaptureX, index == 0 ? what : QString());
        settings.maxY = qMax(settings.maxY, curves.at(index).last().y());
    }
    settings.adjust();
    plotter.setPlotSettings(settings);
    for (int index = 0; index < curves.size(); ++index) {
        plotter.setCurveData(index, curves.at(index));
    }
    plotter.grab().save(file);
}

} // namespace

QString Reports::growth(const Effort &effort, const QString &pictureFile)
{
    QString text;
    QTextStream out(stdout);
    QVector<QVector<QPointF>> pictured(windows().size());
    for (const int kind : {3, 6}) {
        QVector<QStringList> rows = {{"points"}};
        for (const Window &window : windows()) {
            for (const int curves : curveCounts) {
                rows.first().append(curves == 1 ? window.name + QStringLiteral(", 1 curve") : QString::number(curves));
            }
        }
        for (const int points : pointCounts) {
            QStringList row = {QString::number(points)};
            for (int window = 0; window < windows().size(); ++window) {
                for (const int curves : curveCounts) {
                    const Scene scene(kind, points, curves, windows().at(window).size, true, 1.0);
                    const double ms = medianMs(redrawOfProduct(scene).draw, effort);
                    row.append(inMs(ms));
                    if (kind == 3 && curves == curveCounts.last()) {
                        pictured[window].append({double(points), ms / pictureUnitMs});
                    }
                }
            }
            rows.append(row);
        }
        const QString chapter = QStringLiteral("\nOne redraw of \"%1\" as lines, in ms, by points per curve:\n\n")
                                    .arg(CurveSamples::kinds().at(kind)) +
                                table(rows);
        out << chapter;
        out.flush();
        text += chapter;
    }
    if (!pictureFile.isEmpty()) {
        draw(pictured, QStringLiteral("points per curve, four curves of a random walk; Y: microseconds per redraw"),
             pictureFile);
    }
    return text;
}
