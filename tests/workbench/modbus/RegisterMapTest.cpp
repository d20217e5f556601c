#include "Mistakes.h"
#include "modules/modbus/RegisterMapReader.h"
#include "modules/modbus/RegisterMapRows.h"

#include "host/Command.h"

#include <sys/stat.h>

namespace
{

/// A sound map; rows of mistakes replace parts of it.
const char soundMap[] = R"({
    "title": "T", "wordOrder": "high first",
    "values": [
        { "name": "P", "table": "holding register", "address": "0x10", "type": "int32", "axis": 0 },
        { "name": "S", "table": "holding register", "address": 18, "type": "uint16", "axis": 0,
          "fields": [ { "name": "F", "bit": 12, "width": 4, "signed": true } ] },
        { "name": "C", "table": "input register", "address": 18, "type": "float32", "resolution": 0.1 },
        { "name": "O", "table": "coil", "address": 0 }
    ]
})";

RegisterMap soundlyRead(const QByteArray &json)
{
    const RegisterMapResult result = readRegisterMap(json, "file");
    if (!result.error.isEmpty()) {
        qFatal("%s", qPrintable(result.error));
    }
    return result.map;
}

QString sortedText(QStringList texts)
{
    texts.sort();
    return texts.join(',');
}

QStringList textsIn(const QJsonValue &list)
{
    QStringList texts;
    const QJsonArray array = list.toArray();
    for (int index = 0; index < array.size(); ++index) {
        texts.append(array.at(index).toString());
    }
    return texts;
}

/// The answer for the value \a name when the registers from its address on hold \a words.
qint32 decoded(const QVector<RegisterMapRow> &rows, const QString &name, std::vector<quint16> words)
{
    for (const RegisterMapRow &row : rows) {
        if (row.name != name) {
            continue;
        }
        Command request;
        request.setAddress(7);
        request.setCommand(quint8(row.command));
        request.setMotorBank(quint8(row.motorBank));
        request.setType(quint8(row.number));
        const auto value = lookupIn(rows, 7)(request);
        REQUIRE(value && value->span.count <= words.size());
        REQUIRE(!lookupIn(rows, 8)(request)); // another device's
        return value->decode(words.data());
    }
    qFatal("no row %s", qPrintable(name));
    return 0;
}

} // namespace

/// Register maps: what is read from the file, the rows that come of it, and the numbers that come out of registers.
class RegisterMapTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void numbers_data()
    {
        const int minimum = std::numeric_limits<qint32>::min();
        const int maximum = std::numeric_limits<qint32>::max();
        testRows<QVector<int>, int, QString>(
            {"words", "expected", "shown"},
            {
                {R"("type": "int16")", {0xFFFE}, -2, "V"},
                {R"("type": "uint16", "unit": "mm")", {0xFFFE}, 65534, "V [mm]"},
                {R"("type": "int32")", {0xFFFF, 0xFFFD}, -3, "V"},
                {R"("type": "int32", "wordOrder": "low first")", {0x1234, 0xFFFF}, int(0xFFFF1234), "V"},
                {R"("type": "int32", "byteOrder": "low first")", {0x0100, 0x0200}, 0x00010002, "V"},
                {R"("type": "int32", "byteOrder": "low first", "wordOrder": "low first")",
                 {0x7856, 0x3412},
                 0x12345678,
                 "V"},
                {R"("type": "uint32", "unit": "s")", {0x8000, 0}, maximum, "V [s]"},
                {R"("type": "int16", "scale": 0.01, "unit": "A")", {0xFF85}, -123, "V [10 mA]"},
                {R"("type": "int16", "scale": -0.001, "unit": "m/s")", {5}, -5, "V [mm/s]"},
                {R"("type": "uint16", "scale": 0.1, "offset": -40, "unit": "degC")", {655}, 255, "V [0.1 degC]"},
                {R"("type": "uint16", "scale": 0.1, "offset": 0.25, "resolution": 1)", {12}, 1, "V"},
                {R"("type": "uint16", "scale": 0.25, "resolution": 0.5)", {3}, 2, "V [0.5]"}, // 1.5 is rounded up
                {R"("type": "int16", "scale": 0.25, "resolution": 0.5)", {0xFFFD}, -2, "V [0.5]"},
                {R"("type": "int16", "scale": 0.1, "unit": "m^2")", {1}, 1, "V [0.1 m^2]"}, // a prefix would be squared
                {R"("type": "int32", "scale": 1e6, "resolution": 1)", {0x8000, 0}, minimum, "V"},
                {R"("type": "float32", "resolution": 0.001, "unit": "V")", {0xC1C4, 0}, -24500, "V [mV]"},
                {R"("type": "float32", "resolution": 1)", {0x7F80, 0}, maximum, "V"}, // infinity
                {R"("type": "float32", "resolution": 1)", {0x7FC0, 0}, minimum, "V"}  // NaN
            });
    }

    void numbers()
    {
        QFETCH(QVector<int>, words);
        QFETCH(int, expected);
        QFETCH(QString, shown);
        const QString json = QStringLiteral(R"({"title": "T", "values": [ {"name": "V", "table": "input register",
                                                "address": 0, "axis": 0, %1} ]})")
                                 .arg(QTest::currentDataTag());
        const QVector<RegisterMapRow> rows = registerMapRows(soundlyRead(json.toUtf8()));
        QCOMPARE(decoded(rows, "V", {words.cbegin(), words.cend()}), expected);
        QCOMPARE(rows.at(0).shownName(), shown);
    }

    void rowsOfExamples()
    {
        const RegisterMap servo = soundlyRead(fileBytes("examples/modbus/servo-drive.json"));
        const QVector<RegisterMapRow> rows = registerMapRows(servo);
        QCOMPARE(servo.axisCount(), 1);
        QCOMPARE(decoded(rows, "Status word", {0x0C37}), 0x0C37);
        QCOMPARE(decoded(rows, "Status word: Target reached", {0x0C37}), 1);
        QCOMPARE(decoded(rows, "Status word: Fault", {0x0C37}), 0);
        QCOMPARE(decoded(rows, "Enable switch", {1}), 1);
        QSet<QString> places;
        for (const RegisterMapRow &row : rows) {
            places.insert(QString("%1 %2 %3").arg(row.mapName).arg(row.command).arg(row.motorBank));
            if (row.name == "Identity") { // unsigned and wide: containers cut the fields out themselves
                QCOMPARE(row.fractions.size(), 3);
                QCOMPARE(row.value.decode(std::vector<quint16>{0xFEDC, 1}.data()), qint32(0xFEDC0001));
            }
            if (row.name == "Error code") {
                QCOMPARE(row.number, 0x3F); // as in its address
                QCOMPARE(row.widthBits, 16);
            }
        }
        QCOMPARE(sortedText(places.values()), QString(" 148 0,axis0 6 0,global2 10 2,io0 15 0,io1 15 1,io2 15 2"));

        const RegisterMap stepper = soundlyRead(fileBytes("examples/modbus/stepper-block.json"));
        QCOMPARE(stepper.axisCount(), 3);
        QCOMPARE(int(stepper.values.at(6).span.address), 1000); // it counts from 1
        const QVector<RegisterMapRow> own = registerMapRows(stepper);
        // Narrow or signed fields would be left out, or shown without their sign: they are rows of their own.
        QCOMPARE(decoded(own, "Faults: Stall", {0xFE0B}), 5);
        QCOMPARE(decoded(own, "Faults: Temperature difference", {0xFE0B}), -2);
        const char isSigned[] = R"({"title": "T", "values": [ {"name": "R", "table": "input register", "address": 0,
            "type": "uint16", "fields": [ {"name": "F", "bit": 4, "width": 8, "signed": true} ]} ]})";
        QCOMPARE(decoded(registerMapRows(soundlyRead(isSigned)), "R: F", {0xFFE0}), -2);
    }

    void schemaSaysWhatIsRead()
    {
        const QJsonObject schema = QJsonDocument::fromJson(fileBytes("docs/register-map.schema.json")).object();
        const QJsonObject definitions = schema.value("definitions").toObject();
        const auto fields = [](const QJsonObject &object) {
            REQUIRE(object.value("additionalProperties").isBool());
            return sortedText(object.value("properties").toObject().keys());
        };
        const QJsonObject value = definitions.value("value").toObject();
        QCOMPARE(fields(schema), sortedText(RegisterMapFormat::mapFields()));
        QCOMPARE(fields(value), sortedText(RegisterMapFormat::valueFields()));
        QCOMPARE(fields(definitions.value("field").toObject()), sortedText(RegisterMapFormat::bitFieldFields()));
        const auto words = [&value](const char *name) {
            return textsIn(value.value("properties").toObject().value(name).toObject().value("enum"));
        };
        QCOMPARE(words("table"), RegisterMapFormat::tables());
        QCOMPARE(words("type"), RegisterMapFormat::types());
        QCOMPARE(words("group"), RegisterMapFormat::groups());
        QCOMPARE(textsIn(definitions.value("order").toObject().value("enum")), RegisterMapFormat::byteOrders());

        // What the schema requires of a value, the reader misses.
        const QStringList required = textsIn(value.value("required")) + QStringList{"type"};
        for (const QString &name : required) {
            QJsonObject map = QJsonDocument::fromJson(soundMap).object();
            QJsonArray values = map.value("values").toArray();
            QJsonObject first = values.at(0).toObject();
            first.remove(name);
            values[0] = first;
            map["values"] = values;
            const QString error = readRegisterMap(QJsonDocument(map).toJson(), QString()).error;
            QVERIFY2(error.contains(QString("values[0].%1\"").arg(name)), qPrintable(error));
        }

        const QString page = QString::fromUtf8(fileBytes("docs/register-maps.md"));
        soundlyRead(page.section("```json", 1).section("```", 0, 0).toUtf8());
        const QStringList allFields = RegisterMapFormat::valueFields() + RegisterMapFormat::bitFieldFields();
        for (const QString &name : allFields) {
            QVERIFY2(page.contains(QString("`%1`").arg(name)), qPrintable(name));
        }
    }

    void mistakeIsNamed_data()
    {
        const QString sound(soundMap);
        testRows<QString, QString, QString>(
            {"original", "mistake", "expected"},
            {{"broken syntax", "\"P\"", "P", ":4: expected JSON"},
             {"mistyped field", "\"type\": \"int32\"", "\"tpye\": \"int32\"", "values[0].tpye"},
             {"no values", sound, "{ \"title\": \"T\", \"values\": [] }", "at least one value"},
             {"unknown table", "coil", "coils", "values[3].table\": expected one of \"coil\", \"discrete input\""},
             {"unknown type", "\"int32\"", "\"int64\"", "values[0].type\": expected one of \"int16\""},
             {"unknown order", "high first", "big", "wordOrder\": expected one of \"high first\""},
             {"address beyond the last", "0x10", "0xFFFF", "a whole number from 0 to 65534"},
             {"address without a number", "0x10", "0x10h", "values[0].address"},
             {"address with a sign", "18, \"type\": \"uint16\"", "-1, \"type\": \"uint16\"", "values[1].address"},
             {"counts from 1", "\"title\"", "\"countsFrom\": 1, \"title\"",
              "values[3].address\": expected a whole number"},
             {"counts from 2", "\"title\"", "\"countsFrom\": 2, \"title\"", "countsFrom"},
             {"overlap", "\"address\": 18, \"type\": \"uint16\"", "\"address\": 17, \"type\": \"uint16\"",
              "values[1].address\": expected an address beside that of \"P\""},
             {"overlap from below", "\"0x10\"", "\"0x11\"",
              "values[1].address\": expected an address beside that of \"P\""},
             {"duplicate", "\"0x10\", \"type\": \"int32\"", "18, \"type\": \"int16\"", "but \"P\" has it"},
             {"name of another", "\"S\"", "\"P\"", "values[1].name\": expected a name"},
             {"name of the module's", "\"C\"", "\"S: F\"", "but \"S: F\" is also that of values[2]"},
             {"name with a line feed", "\"C\"", "\"C\\nD\"",
              "values[2].name\": expected up to 60 characters in one line"},
             {"field beyond the last", "\"width\": 4", "\"width\": 5",
              "values[1].fields[0].width\": expected a whole number from 1 to 4"},
             {"field of a scaled number", "\"uint16\"", "\"uint16\", \"scale\": 2, \"resolution\": 1",
              "values[1].fields"},
             {"float without a step", "\"resolution\": 0.1", "\"unit\": \"A\"", "values[2].resolution"},
             {"step of 0", "0.1 }", "0 }", "values[2].resolution"},
             {"scale of 0", "\"uint16\"", "\"uint16\", \"scale\": 0", "values[1].scale"},
             {"coil with a type", "\"address\": 0 }", "\"address\": 0, \"type\": \"int16\" }", "values[3].type"},
             {"readAhead in words", "\"address\": 0 }", "\"address\": 0, \"readAhead\": \"no\" }",
              "values[3].readAhead\": expected true or false"},
             {"axis and group", "\"int32\"", "\"int32\", \"group\": \"register\"", "values[0].group"},
             {"gap between axes", "\"int32\", \"axis\": 0", "\"int32\", \"axis\": 2", "axis 1 has no value"},
             {"no axis for the module's values", ", \"axis\": 0", ", \"group\": \"variable\"", "\"register\", because"},
             {"no object at all", sound, "[]", "expected an object"},
             {"nested too deeply", sound, QString(200000, '['), "expected JSON"}});
    }

    void mistakeIsNamed()
    {
        verifyMistakeIsNamed(soundMap, [](const QByteArray &json) { return readRegisterMap(json, "file").error; });
    }

    void boundsAreKept()
    {
        const auto mapOf = [](int count) {
            QString values;
            for (int i = 0; i < count; ++i) {
                values += QStringLiteral(R"(%1{"name": "V%2", "table": "coil", "address": %2, "axis": 0})")
                              .arg(i == 0 ? "" : ",")
                              .arg(i);
            }
            return QStringLiteral(R"({"title": "T", "values": [%1]})").arg(values).toUtf8();
        };
        QCOMPARE(registerMapRows(soundlyRead(mapOf(256))).constLast().number, 255);
        const QString tooMany = readRegisterMap(mapOf(257), "file").error;
        QVERIFY2(tooMany.contains("values[256]") && tooMany.contains("at most 256"), qPrintable(tooMany));

        const QString path = temporaryPath("map.json");
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(soundMap).leftJustified(int(RegisterMapFormat::maximumFileBytes)));
        file.flush();
        QCOMPARE(readRegisterMapFile(path).error, QString());
        file.write(" ");
        file.flush();
        QVERIFY(readRegisterMapFile(path).error.contains("1024 KiB"));
        const QString pipe = temporaryPath("pipe");
        QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
        QVERIFY(readRegisterMapFile(pipe).error.contains("expected a file")); // opening it would wait for a writer
        QVERIFY(readRegisterMapFile(QDir::tempPath()).error.contains("expected a file"));
        QVERIFY(readRegisterMapFile(temporaryPath("none")).error.contains("cannot be read"));
    }

private:
    static QByteArray fileBytes(const char *path)
    {
        QFile file(QString(SOURCE_FOLDER "/") + path);
        REQUIRE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
};

GUARDED_TEST(RegisterMapTest)
#include "RegisterMapTest.moc"
