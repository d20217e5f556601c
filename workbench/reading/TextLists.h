#pragma once

#include <QStringList>

/**
 * The entries of \a texts that are most like \a wanted, the best first, for an error about a mistyped name.
 *
 * Texts that contain \a wanted or are contained in it come first, then those with the smallest Levenshtein distance.
 * Units in brackets at the end are left aside, upper and lower case are the same.
 * \param maximumCount of entries
 */
QStringList nearestTexts(const QString &wanted, const QStringList &texts, int maximumCount = 3);

/// "one", "two", "three", as errors list what there is.
QString quotedList(const QStringList &texts);
