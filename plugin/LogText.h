#pragma once

#include <QPointF>
#include <QString>
#include <QVector>

/**
 * The text of a recording: fields separated by ";", every field followed by its separator, nothing quoted or escaped,
 * lines ended by the host's line end.
 */
namespace LogText
{

/// The fields of one curve in the two header lines.
struct CurveCaptions
{
    QString xModule;
    QString yModule;
    QString xName;
    QString yName;
};

/// Both header lines, for the curves in the given order.
QString header(const QVector<CurveCaptions> &curves);

/// The two fields of a new point; coordinates are whole numbers within 32 bit, in raw units of their sources.
QString pointFields(const QPointF &point);

/// The two empty fields of a curve that repeats its last point.
QString repeatedPointFields();

/// The data line with number \a number (1 and up) and the given fields.
QString dataLine(int number, const QString &fields);

} // namespace LogText
