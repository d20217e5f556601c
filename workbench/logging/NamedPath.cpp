#include "logging/NamedPath.h"

#include <QFileInfo>
#include <QRegularExpression>

QString namedPath(const QString &text)
{
    // A path may have blanks in it: the longest part of the text that exists is taken, from its start to some mark
    // between words.
    static const QRegularExpression start(QStringLiteral("(?:^|[\\s\"'(])((?:[A-Za-z]:)?[/\\\\][^\\s])"));
    static const QRegularExpression end(QStringLiteral("[\\s\"',;:)]|\\.$"));
    constexpr int maximumAttempts = 30; // each looks into the file system
    int attempts = 0;
    QRegularExpressionMatchIterator starts = start.globalMatch(text);
    while (starts.hasNext()) {
        const int from = starts.next().capturedStart(1);
        int to = text.size();
        while (to > from && attempts++ < maximumAttempts) {
            QString path = text.mid(from, to - from).trimmed();
            if (QFileInfo::exists(path)) {
                return path;
            }
            to = text.lastIndexOf(end, to - 1);
        }
    }
    return {};
}
