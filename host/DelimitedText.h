#pragma once

#include <QChar>
#include <QModelIndexList>
#include <QString>

class QStandardItemModel;

/// The format of delimited text.
struct DelimitedFormat
{
    QChar separator = QLatin1Char(';');
    QChar decimalMark = QLatin1Char('.');
};

/// Converts tables to delimited text (RFC 4180). Each line ends with the host's line end. GUI thread.
namespace DelimitedText
{

/// The header text of \a column; empty when none was set, where headerData() would return a number.
QString columnCaption(const QStandardItemModel &model, int column, int role);

/**
 * \a text as one field: a number with the format's decimal mark, other text quoted where RFC 4180 requires it.
 *
 * Text that a spreadsheet would run as a formula gets a leading apostrophe, because captions come from devices.
 */
QString field(const QString &text, const DelimitedFormat &format);

/// A line of module captions (if there are any), a line of column captions, and the rows; empty without columns.
QString table(const QStandardItemModel &model, int moduleCaptionRole, const DelimitedFormat &format);

/// The \a selected cells row by row, without captions; cells in between that are not selected are empty fields.
QString cells(QModelIndexList selected, const DelimitedFormat &format);

} // namespace DelimitedText
