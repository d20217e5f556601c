#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

/// The outermost object of a JSON text, or one line that names the file and what is wrong; \c error is empty when
/// nothing is.
struct JsonResult
{
    QJsonObject object;
    QString error;
};

/// Reads JSON text; \a fileName is how errors call it. A text that is nested too deeply is an error like any other.
JsonResult readJsonText(const QByteArray &json, const QString &fileName);

/// Reads the file at \a path, which has to be a regular file of up to \a maximumBytes: a pipe could block for ever.
JsonResult readJsonFile(const QString &path, qint64 maximumBytes);
