#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

/**
 * Reads the fields of JSON objects and remembers the first thing that is wrong with them.
 *
 * \c place is where an object stands, for example "curves[0].x"; the empty text is the outermost object. A field that
 * is wrong gives the default value, so that reading can go on to its end. Fields without a default are required.
 */
class FieldReader
{
public:
    explicit FieldReader(const QString &fileName);

    /// One line with file, field and what is expected; empty when all is well.
    QString error() const;

    /// Notes that the field \a name of the object at \a place is not as \a expected; only the first note counts.
    void complain(const QString &place, const QString &name, const QString &expected);

    /// Complains about any field whose name is not in \a names: a mistyped name must not pass for a missing one.
    void allowOnly(const QJsonObject &object, const QString &place, const QStringList &names);

    QString text(const QJsonObject &object, const QString &place, const QString &name);
    QString text(const QJsonObject &object, const QString &place, const QString &name, const QString &defaultText);
    bool truth(const QJsonObject &object, const QString &place, const QString &name, bool defaultValue);
    double number(const QJsonObject &object, const QString &place, const QString &name, double defaultValue);
    /// A whole number from \a least to \a greatest.
    qint64 whole(const QJsonObject &object, const QString &place, const QString &name, qint64 least, qint64 greatest,
                 qint64 defaultValue);
    QJsonObject object(const QJsonObject &object, const QString &place, const QString &name, bool isRequired);
    /// The objects of a list; an empty list where the field is missing and not required.
    QList<QJsonObject> objects(const QJsonObject &object, const QString &place, const QString &name, bool isRequired);

    /// The place of a field, or of one element of it when \a index is not negative.
    static QString placeOf(const QString &place, const QString &name, int index = -1);

private:
    const QString m_fileName;
    QString m_error;
};
