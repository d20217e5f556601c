#pragma once

#include "modules/recording/RecordingFormat.h"

#include <QStringList>

#include <vector>

class QFile;

/**
 * Where the rows of a recording are in its file, in blocks, and what its columns need to be played.
 *
 * Holds no rows: for each block its place, and the number that each column has before it, because a missing number is
 * that of the row before. Its size is some hundred bytes for each block of about fieldsPerBlock fields.
 */
struct RecordingIndex
{
    static constexpr int fieldsPerBlock = 16384; ///< decoded at once, in less than a millisecond
    /// The maximum gap in the counter of a log, lines. Beyond it the row follows the one before at once.
    static constexpr int maximumGap = 1000000;

    struct Block
    {
        qint64 offset;      ///< of its first line, bytes
        int firstRow;       ///< from 0
        qint64 firstStep;   ///< see RecordingFile
        qint64 lastCounter; ///< of the row before; in the first block one less than that of its first row
    };

    std::vector<Block> blocks;
    std::vector<double> carried; ///< for each block the number before it in each column; NaN where there is none yet
    std::vector<double> first;   ///< the first number of each column; 0 where there is none
    QVector<int> powers;         ///< for each column, see RecordedColumn::power
    qint64 endOffset = 0;        ///< behind the last row, bytes
    int rowCount = 0;
    qint64 lastStep = 0;
    QStringList notes; ///< what was left out, one line each

    /// The steps from a row with the first counter to one with the second.
    static int stepsBetween(qint64 counterBefore, qint64 counter);
    qint64 bytes() const; ///< Memory that it takes.
};

/// An index, or what is wrong with the file, with line and column.
struct RecordingIndexResult
{
    RecordingIndex index;
    QString error;
};

/// Reads \a file once, from the first line of data to its end. It is open; where it stands afterwards is not defined.
RecordingIndexResult buildRecordingIndex(QFile *file, const RecordingFormat &format);
