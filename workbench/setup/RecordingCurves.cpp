#include "setup/RecordingCurves.h"

#include <QFileInfo>

#include <algorithm>

namespace
{

SceneSource sourceOf(const RecordedColumn &column, const QString &key, int groups)
{
    SceneSource source;
    source.module = key;
    source.motor = groups < 2 ? QString() : QStringLiteral("Axis %1").arg(column.group);
    source.value = (column.name + QLatin1Char(' ') + column.suffix()).trimmed();
    return source;
}

SceneSource timeSource(const QString &key)
{
    SceneSource source;
    source.module = key;
    source.value = QStringLiteral("Recording: time [ms]");
    return source;
}

} // namespace

QList<SceneCurve> recordingCurves(const QVector<RecordedColumn> &columns, const QString &key)
{
    constexpr int maximumCurves = Scene::maximumCurves;
    const int groups = columns.isEmpty() ? 0 : columns.constLast().group + 1;
    const bool isLog = !columns.isEmpty() && columns.constFirst().field > 0; // behind the counter
    QList<SceneCurve> curves;
    const auto append = [&](const SceneSource &x, const SceneSource &y) {
        SceneCurve curve;
        curve.x = x;
        curve.y = y;
        curves.append(curve);
    };
    if (columns.size() == 1) {
        append(timeSource(key), sourceOf(columns.constFirst(), key, groups));
        return curves;
    }
    const int step = isLog ? 2 : 1;
    for (int y = 1; y < columns.size() && curves.size() < maximumCurves; y += step) {
        append(sourceOf(columns.at(isLog ? y - 1 : 0), key, groups), sourceOf(columns.at(y), key, groups));
    }
    return curves;
}

QString recordingKey(const QString &path, const QStringList &taken)
{
    constexpr int maximumNameLength = 40; // as wide as a box shows it
    QString name = QFileInfo(path).completeBaseName().simplified().left(maximumNameLength).trimmed();
    name = name.isEmpty() ? QStringLiteral("recording") : name;
    for (int number = 0;; ++number) {
        const QString place = QStringLiteral("REC%1/").arg(number);
        if (!std::any_of(taken.cbegin(), taken.cend(), [&](const QString &key) { return key.startsWith(place); })) {
            return place + name;
        }
    }
}
