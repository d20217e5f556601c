#include "reading/TextLists.h"

#include <QPair>
#include <QVector>

#include <algorithm>
#include <numeric>

namespace
{

constexpr int partRank = 1000000; // puts parts of the text in front of all others

/// Insertions, deletions and replacements of characters that make one text of the other.
int levenshteinDistance(const QString &one, const QString &other)
{
    QVector<int> row(other.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (int i = 0; i < one.size(); ++i) {
        int diagonal = row.at(0);
        row[0] = i + 1;
        for (int j = 0; j < other.size(); ++j) {
            const int replaced = diagonal + (one.at(i) == other.at(j) ? 0 : 1);
            diagonal = row.at(j + 1);
            row[j + 1] = std::min({replaced, diagonal + 1, row.at(j) + 1});
        }
    }
    return row.constLast();
}

} // namespace

QStringList nearestTexts(const QString &wanted, const QStringList &texts, int maximumCount)
{
    const auto comparable = [](const QString &text) { // without its unit
        return text.toLower().section(QStringLiteral(" ["), 0, 0).trimmed();
    };
    const QString lowerWanted = comparable(wanted);
    QVector<QPair<int, QString>> ranked;
    for (const QString &text : texts) {
        const QString lower = comparable(text);
        const bool isPart = !lower.isEmpty() && (lower.contains(lowerWanted) || lowerWanted.contains(lower));
        ranked.append({levenshteinDistance(lower, lowerWanted) - (isPart ? partRank : 0), text});
    }
    std::stable_sort(ranked.begin(), ranked.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    QStringList nearest;
    for (int i = 0; i < std::min(maximumCount, ranked.size()); ++i) {
        nearest.append(ranked.at(i).second);
    }
    return nearest;
}

QString quotedList(const QStringList &texts)
{
    return QLatin1Char('"') + texts.join(QStringLiteral("\", \"")) + QLatin1Char('"');
}
