#pragma once

#include "modules/recording/RecordingIndex.h"

#include <QDateTime>
#include <QFile>

#include <memory>
#include <vector>

/**
 * A recording that stays in its file: opened once, then read in blocks as rows are asked for.
 *
 * Opening reads the whole file once to check it, and keeps an index only. Rows are counted from 0. A row is also at a
 * step, which is where it is in time, in sampling intervals: the rows of a log are as far apart as their counters, all
 * others by one step.
 *
 * A file that is renamed or removed meanwhile can still be read. When it gets shorter or its contents change (the blocks
 * are read, not mapped, so that nothing crashes), the last numbers stay and trouble() reports it. What is appended is
 * not read. GUI thread.
 */
class RecordingFile
{
public:
    static constexpr qint64 maximumBytes = qint64{1} << 30;

    /// A recording, or one line that says what is wrong with the file, with line and column.
    struct Result
    {
        std::unique_ptr<RecordingFile> file;
        QString error;
    };

    static Result open(const QString &path);

    QString path() const;
    const RecordingFormat &format() const;
    const QVector<RecordedColumn> &columns() const;
    QStringList notes() const; ///< What was left out or may be wrong, one line each.

    int rowCount() const;    ///< At least 1.
    qint64 lastStep() const; ///< Of the last row; the first one is at step 0.

    /// The last row that is not behind \a step.
    int rowAt(qint64 step);
    qint64 stepOf(int row);

    /// The number of a column in a row, from the row before where it is missing, times the column's power of ten.
    qint32 value(int row, int column);

    /// What went wrong with reading, one line; empty when nothing did.
    QString trouble() const;

    /// How the file differs now from what was opened, one line; empty when it does not. Looks at the disk.
    QString change() const;

    qint64 indexBytes() const;  ///< Memory that the file takes beside the block that was decoded last.
    qint64 decodedRows() const; ///< Rows that were decoded since it was opened.

private:
    RecordingFile() = default;

    QString openFile(const QString &path);
    int blockOf(int row) const;
    bool load(int block);
    bool decode(int block, const QByteArray &bytes);
    int rowsIn(int block) const;

    QFile m_file;
    qint64 m_size = 0;
    QDateTime m_modified;
    RecordingFormat m_format;
    RecordingIndex m_index;
    QStringList m_notes;
    QString m_trouble;
    qint64 m_decodedRows = 0;

    int m_block = -1;             // the decoded one
    std::vector<qint32> m_values; // of its rows, one after the other
    std::vector<qint64> m_steps;  // of its rows
    std::size_t m_lastRow = 0;    // of those, that was read last
};
