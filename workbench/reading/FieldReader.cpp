#include "reading/FieldReader.h"

#include "reading/TextLists.h"

#include <QCoreApplication>
#include <QJsonValue>

#include <cmath>

namespace
{

struct FieldReaderText
{
    Q_DECLARE_TR_FUNCTIONS(FieldReader)
};

/// With blanks for line breaks and other control characters, which names and texts of a file may hold.
QString oneLine(QString text)
{
    for (QChar &character : text) {
        const QChar::Category category = character.category();
        if (category == QChar::Other_Control || category == QChar::Separator_Line ||
            category == QChar::Separator_Paragraph) {
            character = QLatin1Char(' ');
        }
    }
    return text;
}

} // namespace

FieldReader::FieldReader(const QString &fileName) : m_fileName(fileName) {}

QStringList FieldReader::errors() const
{
    return m_errors;
}

QString FieldReader::error() const
{
    return m_errors.value(0);
}

void FieldReader::addError(const QString &place, const QString &name, const QString &expected)
{
    const QString field = placeOf(place, name);
    if (!m_places.contains(field)) { // what follows from the first error would only confuse
        m_places.append(field);
        m_errors.append(oneLine(FieldReaderText::tr("%1: field \"%2\": expected %3").arg(m_fileName, field, expected)));
    }
}

void FieldReader::allowOnly(const QJsonObject &object, const QString &place, const QStringList &names)
{
    const QStringList present = object.keys();
    for (const QString &name : present) {
        if (!names.contains(name)) {
            addError(place, name, FieldReaderText::tr("no such field, only: %1").arg(names.join(QStringLiteral(", "))));
        }
    }
}

QString FieldReader::text(const QJsonObject &object, const QString &place, const QString &name)
{
    const QJsonValue value = object.value(name);
    if (!value.isString() || value.toString().trimmed().isEmpty()) {
        addError(place, name, FieldReaderText::tr("a text that is not empty"));
    }
    return value.toString();
}

QString FieldReader::text(const QJsonObject &object, const QString &place, const QString &name,
                          const QString &defaultText)
{
    const QJsonValue value = object.value(name);
    if (!value.isUndefined() && !value.isString()) {
        addError(place, name, FieldReaderText::tr("a text"));
    }
    return value.toString(defaultText);
}

bool FieldReader::boolean(const QJsonObject &object, const QString &place, const QString &name, bool defaultValue)
{
    const QJsonValue value = object.value(name);
    if (!value.isUndefined() && !value.isBool()) {
        addError(place, name, FieldReaderText::tr("true or false"));
    }
    return value.toBool(defaultValue);
}

double FieldReader::number(const QJsonObject &object, const QString &place, const QString &name, double defaultValue)
{
    const QJsonValue value = object.value(name);
    if (!value.isUndefined() && !(value.isDouble() && std::isfinite(value.toDouble()))) {
        addError(place, name, FieldReaderText::tr("a number"));
    }
    return value.toDouble(defaultValue);
}

QString FieldReader::choice(const QJsonObject &object, const QString &place, const QString &name,
                            const QStringList &choices, const QString &defaultText)
{
    const QJsonValue value = object.value(name);
    if (value.isUndefined() && !defaultText.isEmpty()) {
        return defaultText;
    }
    if (!choices.contains(value.toString())) {
        addError(
            place, name,
            FieldReaderText::tr("one of %1").arg(quotedList(nearestTexts(value.toString(), choices, choices.size()))));
    }
    return value.toString();
}

qint64 FieldReader::integer(const QJsonObject &object, const QString &place, const QString &name, qint64 minimum,
                            qint64 maximum, qint64 defaultValue)
{
    const QJsonValue value = object.value(name);
    if (value.isUndefined()) {
        return defaultValue;
    }
    const double number = value.toDouble();
    if (!value.isDouble() || std::floor(number) < number || number < double(minimum) || number > double(maximum)) {
        addError(place, name, FieldReaderText::tr("a whole number from %1 to %2").arg(minimum).arg(maximum));
        return defaultValue;
    }
    return qint64(number);
}

QJsonObject FieldReader::object(const QJsonObject &object, const QString &place, const QString &name, bool isRequired)
{
    const QJsonValue value = object.value(name);
    if (!value.isObject() && (isRequired || !value.isUndefined())) {
        addError(place, name, FieldReaderText::tr("an object in braces"));
    }
    return value.toObject();
}

QList<QJsonObject> FieldReader::objects(const QJsonObject &object, const QString &place, const QString &name,
                                        bool isRequired)
{
    const QJsonValue value = object.value(name);
    if (!value.isArray() && (isRequired || !value.isUndefined())) {
        addError(place, name, FieldReaderText::tr("a list of objects in brackets"));
    }
    QList<QJsonObject> list;
    const QJsonArray elements = value.toArray();
    for (const QJsonValue &element : elements) {
        if (!element.isObject()) {
            addError(QString(), placeOf(place, name, list.size()), FieldReaderText::tr("an object in braces"));
        }
        list.append(element.toObject());
    }
    return list;
}

QString FieldReader::placeOf(const QString &place, const QString &name, int index)
{
    const QString field = place.isEmpty() ? name : place + QLatin1Char('.') + name;
    return index < 0 ? field : QStringLiteral("%1[%2]").arg(field).arg(index);
}
