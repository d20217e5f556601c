#pragma once

#include "modules/recording/CsvLine.h"
#include "modules/recording/FieldNumber.h"
#include "modules/recording/RecordingFormat.h"

#include <vector>

/**
 * Turns lines of a recording into the numbers of its columns.
 *
 * The first decimal mark that it meets is the one of the whole file: where both occurred, one of them would have to be
 * digit grouping.
 */
class RowDecoder
{
public:
    enum class Outcome
    {
        Row,
        Blank,  ///< an empty line, which is none
        Damaged ///< see problem()
    };

    /// \param format not owned, has to outlive the decoder
    explicit RowDecoder(const RecordingFormat *format);

    /// \param begin, end of a line, without its line feed; a carriage return before it is left aside
    Outcome decode(const char *begin, const char *end);

    /// Of the last row, one for each column of the format.
    const std::vector<FieldNumber> &numbers() const;
    qint64 counter() const; ///< of the last row of a log, 0 or more

    /// What is wrong with the last line, which has \a lineNumber in its file.
    QString problem(int lineNumber) const;

private:
    bool hasRightCount();
    bool readCounter();
    bool readColumns();
    bool fail(int field, const QString &expected);

    const RecordingFormat *const m_format; // not owned
    CsvLine m_fields;
    std::vector<FieldNumber> m_numbers;
    qint64 m_counter = 0;
    char m_decimalMark = 0;
    int m_badField = 0; // -1 for the line as a whole
    QString m_expected;
};
