#pragma once

#include "Scene.h"

#include <QMap>

/// How long and how often is measured.
struct Effort
{
    int minimumRounds = 5;
    int maximumRounds = 25;
    int enoughMs = 2000;   ///< no further round after this time, if there were the minimum of rounds
    int maximumMs = 15000; ///< no further round after this time
    int contestantMs =
        5000; ///< no further round of a contestant that has taken this time, so that the others get theirs
};

/// Runs all contestants in turn, round after round, so that a busy machine hits all alike; the first is for warming up.
/// \return the median of each name of processor time in ms; of contestants of the same name that of the fastest
QMap<QString, double> medianMs(const QVector<Contestant> &contestants, const Effort &effort);

/// The median of one action alone, ms.
double medianMs(const std::function<void()> &action, const Effort &effort);

/// Columns lined up; valid Markdown. The first row is the head.
QString table(const QVector<QStringList> &rows);

QString inMs(double ms);
QString inTimes(double ratio);
