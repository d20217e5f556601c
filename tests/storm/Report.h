#pragma once

#include <QString>

/// \a pattern with \a arguments in place of %1, %2 and so on.
template<typename... Arguments> QString filled(QString pattern, const Arguments &...arguments)
{
    ((pattern = pattern.arg(arguments)), ...);
    return pattern;
}

/// What one part of the storm has tried, and what came of it.
struct Row
{
    QString chapter;
    QString tried;
    qint64 times = 0;
    QString on;      ///< what it was tried on
    QString outcome; ///< figures, or what went wrong
    bool isFault = false;
};

/// How much is done.
struct Sizes
{
    bool isLong = false; ///< else the size that fits into a run of all checks
    quint32 seed = 1;
    double hours = 0.0; ///< for the chapter "day"; 0: in fast motion
    int count = 0;      ///< instead of the chapter's own main figure; 0: that one

    /// \a brief or \a full, or what was asked for.
    int of(int brief, int full) const
    {
        return count > 0 ? count : isLong ? full : brief;
    }
};

/// Collects the rows of this run.
namespace Report
{

/// Prints the row, and keeps it in the file that was named. Warnings that came before make it a fault.
void add(Row row);
/// The row that another process has printed as \a line.
Row row(const QString &line);
bool hasFault();

/// Rows go into the file \a path, too, together with the \a version of the program that makes them.
void setFile(const QString &path, const QString &version);
/// Removes the rows of \a chapter from that file.
void begin(const QString &chapter);
/// The document made of the rows in the file \a path.
QString document(const QString &path);

} // namespace Report
