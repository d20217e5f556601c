#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

/**
 * Reads the fields of JSON objects and remembers what is wrong with them.
 *
 * \c place is where an object stands, for example "curves[0].x"; the empty text is the outermost object. A field that
 * is wrong gives the default value, so that reading can go on to its end. Fields without a default are required.
 */
class FieldReader
{
public:
    explicit FieldReader(const QString &fileName);

    /// One line for each error, with file, field and what is expected, in the order of reading.
    QStringList errors() const;
    /// The first of errors(); empty when there is none.
    QString error() const;

    /// Adds the error that the field \a name of the object at \a place is not as \a expected; one per field is kept.
    void addError(const QString &place, const QString &name, const QString &expected);

    /// Adds an error for each field whose name is not in \a names: a mistyped name must not pass for a missing one.
    void allowOnly(const QJsonObject &object, const QString &place, const QStringList &names);

    /// A text that is required, and not blank.
    QString text(const QJsonObject &object, const QString &place, const QString &name);
    /// A text, which may be blank.
    QString text(const QJsonObject &object, const QString &place, const QString &name, const QString &defaultText);
    /// True or false.
    bool boolean(const QJsonObject &object, const QString &place, const QString &name, bool defaultValue);
    /// Any finite number.
    double number(const QJsonObject &object, const QString &place, const QString &name, double defaultValue);
    /// One of \a choices; an error lists them, the most likely first.
    QString choice(const QJsonObject &object, const QString &place, const QString &name, const QStringList &choices,
                   const QString &defaultText = QString());
    /// A whole number from \a minimum to \a maximum.
    qint64 integer(const QJsonObject &object, const QString &place, const QString &name, qint64 minimum, qint64 maximum,
                   qint64 defaultValue);
    /// An object; an empty one where the field is missing and not required.
    QJsonObject object(const QJsonObject &object, const QString &place, const QString &name, bool isRequired);
    /// The objects of a list; an empty list where the field is missing and not required.
    QList<QJsonObject> objects(const QJsonObject &object, const QString &place, const QString &name, bool isRequired);

    /// The place of a field, or of one element of it when \a index is not negative.
    static QString placeOf(const QString &place, const QString &name, int index = -1);

private:
    const QString m_fileName;
    QStringList m_places; // of the fields with errors
    QStringList m_errors;
};
