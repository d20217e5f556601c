#pragma once

#include <QString>
#include <QStringList>

/// What one chapter of the measurements has to reach: a line for each goal that says "reached" or "missed".
class Goals
{
public:
    /// \param failures what misses the goal, in words; none: it is reached
    void add(const QString &goal, const QStringList &failures);

    QString text() const; ///< Markdown, empty without a goal

private:
    QStringList m_lines;
};
