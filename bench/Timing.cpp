#include "Timing.h"

#include <QElapsedTimer>

#include <algorithm>
#include <ctime>

QMap<QString, double> medianMs(const QVector<Contestant> &contestants, const Effort &effort)
{
    constexpr qint64 nsPerMs = 1000000;
    QVector<QVector<qint64>> timesNs(contestants.size());
    QVector<qint64> usedNs(contestants.size());
    // The time of the processor, so that others on the machine do not count.
    const auto nowNs = [] { return static_cast<qint64>(std::clock()) * (1000000000 / CLOCKS_PER_SEC); };
    QElapsedTimer all;
    all.start();
    for (int round = 0; round < effort.maximumRounds; ++round) {
        // The first round counts when it is the only one: it also makes what is made at the first use.
        const qint64 elapsedMs = all.elapsed();
        if ((round >= effort.minimumRounds && elapsedMs >= effort.enoughMs) || elapsedMs >= effort.maximumMs) {
            break;
        }
        for (int index = 0; index < contestants.size(); ++index) {
            if (usedNs.at(index) > effort.contestantMs * nsPerMs) {
                continue;
            }
            const qint64 startNs = nowNs();
            contestants.at(index).draw();
            timesNs[index].append(nowNs() - startNs);
            usedNs[index] += timesNs.at(index).last();
        }
    }
    QMap<QString, double> medians;
    for (int index = 0; index < contestants.size(); ++index) {
        QVector<qint64> &times = timesNs[index];
        if (times.size() > 1) {
            times.removeFirst();
        }
        const auto middle = times.begin() + times.size() / 2;
        std::nth_element(times.begin(), middle, times.end());
        const double ms = static_cast<double>(*middle) / 1e6;
        const QString name = contestants.at(index).name;
        medians.insert(name, medians.contains(name) ? std::min(ms, medians.value(name)) : ms);
    }
    return medians;
}

double medianMs(const std::function<void()> &action, const Effort &effort)
{
    const QMap<QString, double> medians = medianMs(QVector<Contestant>({{QString(), action}}), effort);
    return medians.first();
}

QString table(const QVector<QStringList> &rows)
{
    QVector<int> widths(rows.first().size());
    for (const QStringList &row : rows) {
        for (int column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths.at(column), row.at(column).size());
        }
    }
    QString text;
    for (int index = 0; index < rows.size(); ++index) {
        QString rule = QStringLiteral("|");
        text += QLatin1Char('|');
        for (int column = 0; column < rows.at(index).size(); ++column) {
            const int width = widths.at(column);
            const QString cell = rows.at(index).at(column);
            text += QLatin1Char(' ') + (column == 0 ? cell.leftJustified(width) : cell.rightJustified(width)) +
                    QStringLiteral(" |");
            rule += QString(width + 1, QLatin1Char('-')) + QStringLiteral(":|");
        }
        text += QLatin1Char('\n');
        if (index == 0) {
            text += rule.replace(widths.first() + 2, 1, QLatin1Char('-')) + QLatin1Char('\n');
        }
    }
    return text;
}

QString inMs(double ms)
{
    return QString::number(ms, 'f', ms < 0.1 ? 3 : ms < 10.0 ? 2 : ms < 100.0 ? 1 : 0);
}

QString inTimes(double ratio)
{
    return QString::number(ratio, 'f', ratio < 10.0 ? 1 : 0) + QStringLiteral("x");
}
