#pragma once

#include "modules/recording/RecordedColumn.h"

#include <QByteArray>
#include <QStringList>
#include <QVector>

/**
 * How the lines of a recording are to be read, as its header and its first lines show it.
 *
 * A log has two header lines, which begin with "Module:" and "Counter"; each of its lines has a counter and then two
 * fields for each curve. The header may name other curves than the lines hold, so the number of curves is the one that
 * most lines have. Any other file has one line with the names of the columns, or two: modules and names.
 */
struct RecordingFormat
{
    /// Requests name a value by 8 bit.
    static constexpr int maximumColumns = 256;
    static constexpr int maximumLineBytes = 65536;
    /// How many lines decide about the number of curves and which columns hold text.
    static constexpr int judgedLines = 1000;

    bool isLog = false;
    char separator = 0; ///< 0 for a file of one column
    bool mayHaveDecimalComma = false;
    bool endsWithSeparator = false; ///< every line does, so that one that is cut off is known
    int fieldCount = 0;             ///< of a line; in a log exactly, in other files at most
    qint64 dataOffset = 0;          ///< of the first line below the header, bytes
    int dataLine = 1;               ///< its number in the file, from 1
    QVector<RecordedColumn> columns;
    QStringList notes; ///< what a person should know about what was made of the header, one line each
};

/// A format, or what is wrong with the header: "line 2, column 1: expected ...".
struct RecordingFormatResult
{
    RecordingFormat format;
    QString error;
};

/**
 * \param head the first bytes of a file, some hundred lines of them, or all
 * \param isWhole whether it is all of them
 */
RecordingFormatResult readRecordingFormat(const QByteArray &head, bool isWhole);

/// "line 3, column 2: expected a number, found "x"", for errors; \a column from 1, or 0 for the line as a whole.
QString recordingProblem(int line, int column, const QString &expected, const QString &found);
