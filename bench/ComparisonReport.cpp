#include "Reports.h"

#include "CoverageMask.h"
#include "CurveDrawing.h"
#include "CurveSamples.h"
#include "Goals.h"
#include "PlotGeometry.h"
#include "RunBlender.h"

#include <QImage>
#include <QPixmap>
#include <QTextStream>

namespace
{

constexpr int fullCurvePoints = 10000;

QString cell(const QMap<QString, double> &times, const QString &name)
{
    return times.contains(name) ? inMs(times.value(name)) : QStringLiteral("-");
}

QString ratio(const QMap<QString, double> &times, const QString &other, const QString &ours)
{
    return times.contains(other) ? inTimes(times.value(other) / times.value(ours)) : QStringLiteral("-");
}

/// Where ours is slower than the others, in words.
struct Slower
{
    QStringList thanQwt;
    QStringList thanCustomPlot;
};

void compare(const QMap<QString, double> &times, const QString &what, Slower *slower)
{
    constexpr double unnoticedMs = 1.0;
    const double ours = times.value(QStringLiteral("ours whole"));
    const double qwt = times.value(QStringLiteral("Qwt whole"), qInf());
    const double customPlot = times.value(QStringLiteral("QCustomPlot whole"), qInf());
    if (qwt < ours) {
        slower->thanQwt.append(QStringLiteral("%1: %2").arg(what, inTimes(qwt / ours)));
    }
    if (customPlot < ours && (ours >= unnoticedMs || customPlot >= unnoticedMs)) {
        slower->thanCustomPlot.append(QStringLiteral("%1: %2").arg(what, inTimes(customPlot / ours)));
    }
}

/// One row of a comparison. The plain way to redraw a whole plot is the product's with other curves.
QStringList row(const QString &kind, const QString &title, const Scene &scene, const Effort &effort, Slower *slower)
{
    Scene empty = scene;
    empty.curves.clear();
    Contestant grid = redrawOfProduct(empty);
    grid.name = QStringLiteral("grid");
    QMap<QString, double> times =
        medianMs(QVector<Contestant>({grid}) + floorContestants(scene) + productContestants(scene) +
                     plainContestants(scene) + qwtContestants(scene) + customPlotContestants(scene),
                 effort);
    compare(times, title + QStringLiteral(", ") + kind, slower);
    times.insert(QStringLiteral("plain whole"),
                 times.value(QStringLiteral("plain alone")) + times.value(QStringLiteral("grid")));
    QStringList cells = {kind, cell(times, QStringLiteral("floor"))};
    for (const QString &way : {QStringLiteral(" alone"), QStringLiteral(" whole")}) {
        const QString ours = QStringLiteral("ours") + way;
        cells.append(cell(times, ours));
        for (const QString &other : {QStringLiteral("plain"), QStringLiteral("Qwt"), QStringLiteral("QCustomPlot")}) {
            cells.append(cell(times, other + way));
            cells.append(ratio(times, other + way, ours));
        }
    }
    return cells;
}

} // namespace

QString Reports::comparison(const Effort &effort, bool all)
{
    QString text = QStringLiteral(
        "Medians in ms, and by how many times ours is faster. \"alone\": the curves on a filled image; \"whole\": the "
        "redraw of a whole plot with grid, axes and text. Floor: filling the image and mapping all points.\n");
    Slower slower;
    QVector<QSize> sizes = {QSize(600, 400), QSize(1920, 1080)};
    if (all) {
        sizes += {QSize(1280, 800), QSize(3840, 2160)};
    }
    for (const QSize &size : qAsConst(sizes)) {
        for (const bool lines : {true, false}) {
            for (const double zoom : {1.0, 10.0}) {
                for (const int curveCount : {4, 1}) {
                    if (curveCount == 1 && !all) {
                        continue;
                    }
                    const QString title =
                        QStringLiteral("%1 curve(s) of %2 points, %3, %4 x %5, %6")
                            .arg(curveCount)
                            .arg(fullCurvePoints)
                            .arg(lines ? QStringLiteral("lines") : QStringLiteral("dots"))
                            .arg(size.width())
                            .arg(size.height())
                            .arg(zoom > 1.0 ? QStringLiteral("zoomed 10-fold") : QStringLiteral("whole view"));
                    QVector<QStringList> rows = {{"curves", "floor", "ours alone", "plain", "", "Qwt", "",
                                                  "QCustomPlot", "", "ours whole", "plain", "", "Qwt", "",
                                                  "QCustomPlot", ""}};
                    // Of noise in a large window other plots take up to ten seconds.
                    const bool takesAllKinds = all || size.width() < 1000;
                    const int kinds = takesAllKinds ? CurveSamples::kinds().size()
                                                    : static_cast<int>(CurveSamples::ordinaryKindCount);
                    for (int kind = 0; kind < kinds; ++kind) {
                        const Scene scene(kind, fullCurvePoints, curveCount, size, lines, zoom);
                        rows.append(row(CurveSamples::kinds().at(kind), title, scene, effort, &slower));
                    }
                    const QString chapter = QStringLiteral("\n### ") + title + QStringLiteral("\n\n") + table(rows);
                    QTextStream(stdout) << chapter;
                    text += chapter;
                }
            }
        }
    }
    Goals goals;
    goals.add(QStringLiteral("whole redraws are never slower than Qwt"), slower.thanQwt);
    goals.add(QStringLiteral("whole redraws are never slower than QCustomPlot but where both take less than 1 ms"),
              slower.thanCustomPlot);
    QTextStream(stdout) << goals.text();
    return text + goals.text();
}

namespace
{

/// A redraw without a curve beside filling an image, in windows of all sizes.
QString emptyRedraws(const Effort &effort)
{
    constexpr double toleratedFills = 1.5;
    constexpr double toleratedMs = 0.5;
    QVector<QStringList> rows = {{"size", "redraw without a curve", "filling the image", "allowed"}};
    QStringList failures;
    for (const QSize &size : {QSize(600, 400), QSize(1280, 800), QSize(1920, 1080), QSize(3840, 2160)}) {
        Scene scene(0, 1, 1, size, true, 1.0);
        scene.curves.clear();
        QImage image(size, QImage::Format_RGB32);
        const QMap<QString, double> ms = medianMs(
            {{"fill", [&image] { image.fill(Qt::darkGray); }}, {"redraw", redrawOfProduct(scene).draw}}, effort);
        const double allowedMs = toleratedFills * ms["fill"] + toleratedMs;
        const QString name = QStringLiteral("%1 x %2").arg(size.width()).arg(size.height());
        rows.append({name, inMs(ms["redraw"]), inMs(ms["fill"]), inMs(allowedMs)});
        if (ms["redraw"] > allowedMs) {
            failures.append(name);
        }
    }
    Goals goals;
    goals.add(
        QStringLiteral("a redraw without a curve takes at most 1.5 times as long as filling the image, and 0.5 ms"),
        failures);
    return QStringLiteral("\nWithout a curve, in ms:\n\n") + table(rows) + goals.text();
}

} // namespace

QString Reports::shares(const Effort &effort)
{
    QVector<QStringList> rows = {
        {"curves", "whole", "fill", "grid, text", "to pixmap", "mapping", "mask, bounds", "blending", "markers"}};
    for (int kind = 0; kind < CurveSamples::kinds().size(); ++kind) {
        const Scene scene(kind, fullCurvePoints, 4, QSize(600, 400), true, 1.0);
        Scene empty = scene;
        empty.curves.clear();
        Scene single = scene;
        const QRect clip = PlotGeometry(scene.size, false).clipRectangle();
        QVector<CoverageMask> masks;
        for (int curve = 0; curve < 4; ++curve) {
            single.curves[curve].resize(1);
            const QPolygonF points = scene.mapped(curve);
            CoverageMask mask;
            mask.reset(clip.size(), penPixels / 2.0);
            for (int index = 1; index < points.size(); ++index) {
                mask.addSegment(points.at(index - 1) - clip.topLeft(), points.at(index) - clip.topLeft());
            }
            masks.append(mask);
        }
        QImage image(scene.size, QImage::Format_RGB32);
        const auto fill = [&] { image.fill(Qt::darkGray); };
        const auto convert = [&] {
            QImage other = image;
            Q_UNUSED(QPixmap::fromImage(std::move(other)))
        };
        const auto map = [&] {
            for (int curve = 0; curve < 4; ++curve) {
                scene.mapped(curve);
            }
        };
        const auto blend = [&] {
            for (int curve = 0; curve < 4; ++curve) {
                const RunBlender blender(&image, clip, curveColor(curve));
                masks[curve].visitWords(
                    [&blender](int row, int column, quint64 bits) { blender.blendWord(row, column, bits); },
                    [&blender](int row, int column) { blender.expect(row, column); });
            }
        };
        const QMap<QString, double> ms = medianMs({{"fill", fill},
                                                   {"convert", convert},
                                                   {"map", map},
                                                   {"blend", blend},
                                                   {"grid", redrawOfProduct(empty).draw},
                                                   {"markers", redrawOfProduct(single).draw},
                                                   {"whole", redrawOfProduct(scene).draw}},
                                                  effort);
        const double markers = ms["markers"] - ms["grid"];
        rows.append({CurveSamples::kinds().at(kind), inMs(ms["whole"]), inMs(ms["fill"]),
                     inMs(ms["grid"] - ms["fill"] - ms["convert"]), inMs(ms["convert"]), inMs(ms["map"]),
                     inMs(ms["whole"] - ms["markers"] - ms["map"] - ms["blend"]), inMs(ms["blend"]),
                     inMs(qMax(0.0, markers))});
    }
    QString text = QStringLiteral("One redraw of four curves of 10000 points as lines at 600 x 400, in ms. The "
                                  "mask and the bounds are what the others leave.\n\n") +
                   table(rows) + emptyRedraws(effort);
    QTextStream(stdout) << "\n### Where the time goes\n\n" << text;
    return text;
}
