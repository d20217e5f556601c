#include "modules/modbus/RegisterMapReader.h"

#include "modules/modbus/RegisterMapCheck.h"
#include "reading/FieldReader.h"
#include "reading/JsonFile.h"
#include "reading/TextLists.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <cmath>

namespace
{

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(RegisterMapReader)
};

using Group = RegisterMap::Group;
using Type = NumberFormat::Type;

template<typename Value> using Words = QList<QPair<QString, Value>>;

const Words<ModbusTable> tableWords = {{QStringLiteral("coil"), ModbusTable::Coil},
                                       {QStringLiteral("discrete input"), ModbusTable::DiscreteInput},
                                       {QStringLiteral("input register"), ModbusTable::InputRegister},
                                       {QStringLiteral("holding register"), ModbusTable::HoldingRegister}};
const Words<Type> typeWords = {{QStringLiteral("int16"), Type::Int16},
                               {QStringLiteral("uint16"), Type::UInt16},
                               {QStringLiteral("int32"), Type::Int32},
                               {QStringLiteral("uint32"), Type::UInt32},
                               {QStringLiteral("float32"), Type::Float32}};
const Words<bool> orderWords = {{QStringLiteral("high first"), false}, {QStringLiteral("low first"), true}};
const Words<Group> groupWords = {{QStringLiteral("variable"), Group::Variable},
                                 {QStringLiteral("digital input"), Group::DigitalInput},
                                 {QStringLiteral("analog input"), Group::AnalogInput},
                                 {QStringLiteral("digital output"), Group::DigitalOutput},
                                 {QStringLiteral("register"), Group::Register}};

const QString nameField = QStringLiteral("name");
const QString descriptionField = QStringLiteral("description");
const QString unitField = QStringLiteral("unit");
const QString addressField = QStringLiteral("address");
const QString typeField = QStringLiteral("type");
const QString byteOrderField = QStringLiteral("byteOrder");
const QString wordOrderField = QStringLiteral("wordOrder");
const QString scaleField = QStringLiteral("scale");
const QString offsetField = QStringLiteral("offset");
const QString resolutionField = QStringLiteral("resolution");
const QString axisField = QStringLiteral("axis");
const QString groupField = QStringLiteral("group");
const QString fieldsField = QStringLiteral("fields");
const QString readAheadField = QStringLiteral("readAhead");
const QString countsFromField = QStringLiteral("countsFrom");

constexpr int tableEntries = 65536;

template<typename Value> QStringList textsOf(const Words<Value> &words)
{
    QStringList texts;
    for (const auto &word : words) {
        texts.append(word.first);
    }
    return texts;
}

/// What a field with one of \a words means; \a defaultValue where the field is missing.
template<typename Value>
Value oneOf(FieldReader &reader, const QJsonObject &object, const QString &place, const QString &name,
            const Words<Value> &words, Value defaultValue)
{
    if (!object.contains(name)) {
        return defaultValue;
    }
    const QString text = object.value(name).toString();
    for (const auto &word : words) {
        if (word.first == text) {
            return word.second;
        }
    }
    reader.addError(place, name, Text::tr("one of %1").arg(quotedList(textsOf(words))));
    return defaultValue;
}

/// The default values that a map gives to all its values.
struct MapDefaults
{
    int countsFrom = 0;
    bool isLowByteFirst = false;
    bool isLowWordFirst = false;
};

/// Reads one value of a map, field by field.
class ValueReader
{
public:
    ValueReader(FieldReader &reader, const QJsonObject &object, const QString &place, const MapDefaults &defaults)
        : m_reader(reader), m_object(object), m_place(place), m_defaults(defaults)
    {
    }

    RegisterMap::Value read()
    {
        m_reader.allowOnly(m_object, m_place, RegisterMapFormat::valueFields());
        m_value.name = shortText(m_object, m_place, nameField, true);
        m_value.description = m_reader.text(m_object, m_place, descriptionField, QString());
        m_value.unit = shortText(m_object, m_place, unitField, false);
        const QString table = QStringLiteral("table");
        if (!m_object.contains(table)) {
            m_reader.addError(m_place, table, Text::tr("one of %1").arg(quotedList(RegisterMapFormat::tables())));
        }
        m_value.span.table = oneOf(m_reader, m_object, m_place, table, tableWords, ModbusTable::HoldingRegister);
        if (m_value.span.table == ModbusTable::Coil || m_value.span.table == ModbusTable::DiscreteInput) {
            readBit();
        } else {
            readNumber();
        }
        m_value.span.count = quint16(m_value.format.words());
        readAddress();
        readGroup();
        m_value.isReadAhead = m_reader.boolean(m_object, m_place, readAheadField, true);
        return m_value;
    }

private:
    void readBit()
    {
        m_value.format.type = Type::Bit;
        const QStringList names = {typeField,   byteOrderField,  wordOrderField, scaleField,
                                   offsetField, resolutionField, fieldsField};
        for (const QString &name : names) {
            if (m_object.contains(name)) {
                m_reader.addError(m_place, name, Text::tr("no such field, because an entry of this table is one bit"));
            }
        }
    }

    void readNumber()
    {
        NumberFormat &format = m_value.format;
        if (!m_object.contains(typeField)) {
            m_reader.addError(m_place, typeField, Text::tr("one of %1").arg(quotedList(RegisterMapFormat::types())));
        }
        format.type = oneOf(m_reader, m_object, m_place, typeField, typeWords, Type::UInt16);
        format.isLowByteFirst =
            oneOf(m_reader, m_object, m_place, byteOrderField, orderWords, m_defaults.isLowByteFirst);
        format.isLowWordFirst =
            oneOf(m_reader, m_object, m_place, wordOrderField, orderWords, m_defaults.isLowWordFirst);
        readScale();
        readFields();
    }

    void readScale()
    {
        NumberFormat &format = m_value.format;
        format.scale = m_reader.number(m_object, m_place, scaleField, 1.0);
        if (!std::isfinite(format.scale) || std::abs(format.scale) <= 0.0) {
            m_reader.addError(m_place, scaleField, Text::tr("a number other than 0"));
        }
        format.offset = m_reader.number(m_object, m_place, offsetField, 0.0);
        if (!format.isInteger() && !m_object.contains(resolutionField)) {
            m_reader.addError(m_place, resolutionField,
                              Text::tr("the step in which a float32 is shown, for example 0.001"));
        }
        format.resolution = m_reader.number(m_object, m_place, resolutionField, std::abs(format.scale));
        if (!std::isfinite(format.resolution) || format.resolution <= 0.0) {
            m_reader.addError(m_place, resolutionField, Text::tr("a number above 0"));
        }
    }

    void readFields()
    {
        const QList<QJsonObject> fields = m_reader.objects(m_object, m_place, fieldsField, false);
        if (!fields.isEmpty() && !m_value.format.isPlain()) {
            m_reader.addError(m_place, fieldsField,
                              Text::tr("no bit fields, because the number is scaled, moved or a float32"));
        }
        for (int i = 0; i < fields.size(); ++i) {
            m_value.fields.append(bitFieldOf(fields.at(i), FieldReader::placeOf(m_place, fieldsField, i)));
        }
    }

    RegisterMap::Field bitFieldOf(const QJsonObject &object, const QString &place)
    {
        m_reader.allowOnly(object, place, RegisterMapFormat::bitFieldFields());
        const int bits = m_value.format.bits();
        const QString bit = QStringLiteral("bit");
        RegisterMap::Field field;
        field.name = shortText(object, place, nameField, true);
        field.description = m_reader.text(object, place, descriptionField, QString());
        field.unit = shortText(object, place, unitField, false);
        if (!object.contains(bit)) {
            m_reader.addError(place, bit, Text::tr("the lowest bit of the field, 0 to %1").arg(bits - 1));
        }
        field.lowestBit = int(m_reader.integer(object, place, bit, 0, bits - 1, 0));
        field.width = int(m_reader.integer(object, place, QStringLiteral("width"), 1, bits - field.lowestBit, 1));
        field.isSigned = m_reader.boolean(object, place, QStringLiteral("signed"), false);
        return field;
    }

    void readAddress()
    {
        const int first = m_defaults.countsFrom;
        const int last = tableEntries - m_value.format.words() + first;
        const QJsonValue value = m_object.value(addressField);
        bool isNumber = value.isDouble();
        double address = value.toDouble();
        if (value.isString()) {
            static const QRegularExpression pattern(QStringLiteral("^(0[xX][0-9A-Fa-f]{1,5}|0|[1-9][0-9]{0,4})$"));
            isNumber = pattern.match(value.toString()).hasMatch();
            constexpr int baseByPrefix = 0;
            address = double(value.toString().toUInt(nullptr, baseByPrefix));
        }
        if (!isNumber || std::floor(address) < address || address < first || address > last) {
            m_reader.addError(m_place, addressField,
                              Text::tr("a whole number from %1 to %2, or a text with one, such as \"0x%3\"")
                                  .arg(first)
                                  .arg(last)
                                  .arg(QString::number(last, 16).toUpper()));
            return;
        }
        m_value.span.address = quint16(int(address) - first);
    }

    void readGroup()
    {
        m_value.group = oneOf(m_reader, m_object, m_place, groupField, groupWords, Group::Variable);
        if (!m_object.contains(axisField)) {
            return;
        }
        if (m_object.contains(groupField)) {
            m_reader.addError(m_place, groupField, Text::tr("no such field, because the value belongs to an axis"));
        }
        m_value.group = Group::Axis;
        m_value.axis =
            int(m_reader.integer(m_object, m_place, axisField, 0, RegisterMap::maximumAxes - 1, m_value.axis));
    }

    /// A text for one line of a table.
    QString shortText(const QJsonObject &object, const QString &place, const QString &name, bool isRequired)
    {
        QString text = isRequired ? m_reader.text(object, place, name) : m_reader.text(object, place, name, QString());
        if (text != text.simplified() || text.contains(QLatin1Char(';')) ||
            text.size() > RegisterMapFormat::maximumNameCharacters) {
            m_reader.addError(
                place, name,
                Text::tr("up to %1 characters in one line, without semicolons, and without blanks around them")
                    .arg(RegisterMapFormat::maximumNameCharacters));
        }
        return text;
    }

    FieldReader &m_reader;
    const QJsonObject &m_object;
    const QString &m_place;
    const MapDefaults &m_defaults;
    RegisterMap::Value m_value;
};

/// Where a value is listed that names neither axis nor group.
Group defaultGroup(const RegisterMap::Value &value, bool hasAxes)
{
    if (!hasAxes) {
        return Group::Register;
    }
    switch (value.span.table) {
    case ModbusTable::Coil:
        return Group::DigitalOutput;
    case ModbusTable::DiscreteInput:
        return Group::DigitalInput;
    case ModbusTable::InputRegister:
    case ModbusTable::HoldingRegister:
        break;
    }
    return Group::Variable;
}

RegisterMap readMap(FieldReader &reader, const QJsonObject &root)
{
    const QString values = QStringLiteral("values");
    reader.allowOnly(root, QString(), RegisterMapFormat::mapFields());
    RegisterMap map;
    map.title = reader.text(root, QString(), QStringLiteral("title")).simplified();
    if (map.title.size() > RegisterMapFormat::maximumNameCharacters) {
        reader.addError(QString(), QStringLiteral("title"),
                        Text::tr("up to %1 characters").arg(RegisterMapFormat::maximumNameCharacters));
    }
    MapDefaults defaults;
    defaults.countsFrom = int(reader.integer(root, QString(), countsFromField, 0, 1, 0));
    defaults.isLowByteFirst = oneOf(reader, root, QString(), byteOrderField, orderWords, false);
    defaults.isLowWordFirst = oneOf(reader, root, QString(), wordOrderField, orderWords, false);
    const QList<QJsonObject> objects = reader.objects(root, QString(), values, true);
    if (objects.isEmpty()) {
        reader.addError(QString(), values, Text::tr("at least one value"));
    }
    for (int i = 0; i < objects.size(); ++i) {
        const QString place = FieldReader::placeOf(QString(), values, i);
        map.values.append(ValueReader(reader, objects.at(i), place, defaults).read());
    }
    const bool hasAxes = map.axisCount() > 0;
    for (int i = 0; i < objects.size(); ++i) {
        RegisterMap::Value &value = map.values[i];
        if (value.group != Group::Axis && !objects.at(i).contains(groupField)) {
            value.group = defaultGroup(value, hasAxes);
        }
    }
    return map;
}

RegisterMapResult mapIn(const JsonResult &json, const QString &fileName)
{
    if (!json.error.isEmpty()) {
        return {{}, json.error};
    }
    FieldReader reader(fileName);
    RegisterMap map = readMap(reader, json.object);
    if (reader.error().isEmpty()) {
        checkRegisterMap(reader, map);
    }
    return {map, reader.error()};
}

} // namespace

RegisterMapResult readRegisterMap(const QByteArray &json, const QString &fileName)
{
    return mapIn(readJsonText(json, fileName), fileName);
}

RegisterMapResult readRegisterMapFile(const QString &path)
{
    return mapIn(readJsonFile(path, RegisterMapFormat::maximumFileBytes), path);
}

QStringList RegisterMapFormat::mapFields()
{
    return {QStringLiteral("$schema"), QStringLiteral("title"), countsFromField, byteOrderField, wordOrderField,
            QStringLiteral("values")};
}

QStringList RegisterMapFormat::valueFields()
{
    return {nameField,      descriptionField, QStringLiteral("table"),
            addressField,   typeField,        unitField,
            byteOrderField, wordOrderField,   scaleField,
            offsetField,    axisField,        groupField,
            fieldsField,    resolutionField,  readAheadField};
}

QStringList RegisterMapFormat::bitFieldFields()
{
    return {nameField,
            descriptionField,
            unitField,
            QStringLiteral("bit"),
            QStringLiteral("width"),
            QStringLiteral("signed")};
}

QStringList RegisterMapFormat::tables()
{
    return textsOf(tableWords);
}

QStringList RegisterMapFormat::types()
{
    return textsOf(typeWords);
}

QStringList RegisterMapFormat::byteOrders()
{
    return textsOf(orderWords);
}

QStringList RegisterMapFormat::groups()
{
    return textsOf(groupWords);
}
