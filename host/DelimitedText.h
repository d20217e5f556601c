#pragma once

#include <QChar>
#include <QModelIndexList>
#include <QString>

class QStandardItemModel;

/// How cells become delimited text.
struct DelimitedFormat
{
    QChar separator = QLatin1Char(';');
    QChar decimalMark = QLatin1Char('.');
};

/// What a table is as delimited text (RFC 4180), each line ended by the host's line end. GUI thread.
namespace DelimitedText
{

/// The header text that was given to \a column; empty when none was, where the model itself would show a number.
QString columnCaption(const QStandardItemModel &model, int column, int role);

/**
 * \a text as one field: quoted when it must be, the decimal mark changed when it is a number.
 *
 * Any other text that a spreadsheet would take for a formula gets a leading apostrophe: the captions come from devices.
 */
QString field(const QString &text, const DelimitedFormat &format);

/// A line of module captions (if there are any), a line of column captions, and the rows; empty without columns.
QString table(const QStandardItemModel &model, int moduleCaptionRole, const DelimitedFormat &format);

/// The cells \a selected without captions, in rows; the gaps between the outermost columns are empty fields.
QString cells(QModelIndexList selected, const DelimitedFormat &format);

} // namespace DelimitedText
