#include "GuardedTest.h"
#include "setup/SceneReader.h"
#include "setup/SceneWriter.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace
{

QJsonObject objectIn(const QString &path)
{
    QFile file(path);
    REQUIRE(file.open(QIODevice::ReadOnly));
    return QJsonDocument::fromJson(file.readAll()).object();
}

/// As much of JSON Schema as the schema uses.
class Schema
{
public:
    explicit Schema(const QJsonObject &root) : m_root(root) {}

    bool fits(const QJsonValue &value) const
    {
        return fits(value, m_root);
    }

    bool fits(const QJsonValue &value, const QJsonObject &node) const
    {
        const QJsonObject rule = resolved(node);
        if (rule.contains("oneOf")) {
            const QJsonArray branches = rule.value("oneOf").toArray();
            return std::count_if(branches.begin(), branches.end(),
                                 [&](const QJsonValue &branch) { return fits(value, branch.toObject()); }) >= 1;
        }
        return fitsType(value, rule.value("type").toString()) && fitsNumber(value, rule) && fitsText(value, rule) &&
               fitsList(value, rule) && fitsObject(value, rule);
    }

    QJsonObject resolved(const QJsonObject &node) const
    {
        const QString name = node.value("$ref").toString().section('/', -1);
        return name.isEmpty() ? node : resolved(m_root.value("$defs").toObject().value(name).toObject());
    }

private:
    static bool fitsType(const QJsonValue &value, const QString &type)
    {
        return type.isEmpty() || (type == "object" && value.isObject()) || (type == "array" && value.isArray()) ||
               (type == "string" && value.isString()) || (type == "boolean" && value.isBool()) ||
               (type == "null" && value.isNull()) || (type == "number" && value.isDouble()) ||
               (type == "integer" && value.isDouble() && std::floor(value.toDouble()) == value.toDouble());
    }

    static bool fitsNumber(const QJsonValue &value, const QJsonObject &rule)
    {
        const double number = value.toDouble();
        return !value.isDouble() ||
               (!(rule.contains("minimum") && number < rule.value("minimum").toDouble()) &&
                !(rule.contains("maximum") && number > rule.value("maximum").toDouble()) &&
                !(rule.contains("exclusiveMinimum") && number <= rule.value("exclusiveMinimum").toDouble()));
    }

    static bool fitsText(const QJsonValue &value, const QJsonObject &rule)
    {
        static QHash<QString, QRegularExpression> patterns;
        const QString text = rule.value("pattern").toString();
        patterns[text].setPattern(text);
        return (!rule.contains("enum") || rule.value("enum").toArray().contains(value)) &&
               (!value.isString() || value.toString().contains(patterns[text]));
    }

    bool fitsList(const QJsonValue &value, const QJsonObject &rule) const
    {
        const QJsonArray list = value.toArray();
        return !value.isArray() ||
               (list.size() >= rule.value("minItems").toInt(0) && list.size() <= rule.value("maxItems").toInt(1000) &&
                std::all_of(list.begin(), list.end(),
                            [&](const QJsonValue &item) { return fits(item, rule.value("items").toObject()); }));
    }

    bool fitsObject(const QJsonValue &value, const QJsonObject &rule) const
    {
        const QJsonObject object = value.toObject();
        const QJsonObject properties = rule.value("properties").toObject();
        const QStringList keys = object.keys();
        const QJsonArray required = rule.value("required").toArray();
        return !value.isObject() ||
               (std::all_of(required.begin(), required.end(),
                            [&](const QJsonValue &key) { return object.contains(key.toString()); }) &&
                std::all_of(keys.begin(), keys.end(), [&](const QString &key) {
                    return properties.contains(key) && fits(object.value(key), properties.value(key).toObject());
                }));
    }

    const QJsonObject m_root;
};

/// Values at and next to every limit of a rule, and of other types.
QJsonArray probesOf(const QJsonObject &rule)
{
    QJsonArray probes = {QJsonValue(), true, -1, 0.5, QString(), " ", QJsonArray(), QJsonObject()};
    for (const char *const border : {"minimum", "maximum", "exclusiveMinimum"}) {
        if (rule.contains(border)) {
            const double number = rule.value(border).toDouble();
            for (const double probe : {number - 1, number, number + 1}) {
                probes.append(probe);
            }
        }
    }
    const QJsonArray choices = rule.value("enum").toArray();
    for (const QJsonValue &choice : choices) {
        probes.append(choice);
        probes.append(choice.toString().toUpper());
        probes.append(choice.toInt() + 1);
    }
    return probes;
}

/// Calls \a tryOne with each changed version of \a value, at every depth; \a place is for the text of a failure.
void changeEverywhere(const Schema &schema, const QJsonValue &value, const QJsonObject &node, const QString &place,
                      const std::function<void(const QJsonValue &, const QString &)> &tryOne)
{
    QJsonObject rule = schema.resolved(node);
    const QJsonArray branches = rule.value("oneOf").toArray();
    for (const QJsonValue &branch : branches) {
        if (schema.fits(value, branch.toObject())) {
            return changeEverywhere(schema, value, branch.toObject(), place, tryOne);
        }
    }
    const QJsonArray probes = probesOf(rule);
    for (int i = 0; i < probes.size(); ++i) {
        tryOne(probes.at(i), QString("%1, probe %2").arg(place).arg(i));
    }
    const QJsonArray list = value.toArray();
    for (int i = 0; i < list.size(); ++i) {
        changeEverywhere(schema, list.at(i), rule.value("items").toObject(), QString("%1[%2]").arg(place).arg(i),
                         [&](const QJsonValue &item, const QString &where) {
                             QJsonArray changed = list;
                             changed[i] = item;
                             tryOne(changed, where);
                         });
    }
    const QJsonObject object = value.toObject();
    const QJsonObject properties = rule.value("properties").toObject();
    for (auto property = properties.begin(); property != properties.end(); ++property) {
        QJsonObject without = object;
        without.remove(property.key());
        tryOne(without, place + " without " + property.key());
        changeEverywhere(schema, object.value(property.key()), property.value().toObject(),
                         place + QLatin1Char('.') + property.key(), [&](const QJsonValue &field, const QString &where) {
                             QJsonObject changed = object;
                             changed.insert(property.key(), field);
                             tryOne(changed, where);
                         });
    }
    if (value.isObject()) {
        QJsonObject surplus = object;
        surplus.insert("surplus", 1);
        tryOne(surplus, place + " with a surplus field");
    }
}

/// Whether \a whole has everything that is in \a part, with the same values.
bool isWithin(const QJsonValue &part, const QJsonValue &whole)
{
    const QJsonArray list = part.toArray();
    for (int i = 0; i < list.size(); ++i) {
        if (list.size() != whole.toArray().size() || !isWithin(list.at(i), whole.toArray().at(i))) {
            return false;
        }
    }
    const QJsonObject object = part.toObject();
    for (auto field = object.begin(); field != object.end(); ++field) {
        if (!isWithin(field.value(), whole.toObject().value(field.key()))) {
            return false;
        }
    }
    return part.isArray() || part.isObject() ? part.type() == whole.type() : part == whole;
}

QByteArray jsonOf(const QJsonValue &document)
{
    return QJsonDocument(document.toObject()).toJson();
}

QStringList errorsOf(const QJsonValue &document)
{
    return readScene(jsonOf(document), "file").errors;
}

} // namespace

/// The documented format, as a schema, against the reader of set-ups.
class SetUpSchemaTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void readerTakesWhatTheSchemaTakes_data()
    {
        QTest::addColumn<QJsonObject>("document");
        QFile page(DOCUMENT_FOLDER "/setups.md");
        QVERIFY(page.open(QIODevice::ReadOnly));
        const QStringList blocks = QString::fromUtf8(page.readAll()).split("```json");
        for (int i = 1; i < blocks.size(); ++i) {
            const QByteArray json = blocks.at(i).section("```", 0, 0).toUtf8();
            QTest::newRow(qPrintable(QString("example %1").arg(i))) << QJsonDocument::fromJson(json).object();
        }
        QStringList paths = {startScenePath()};
        const QStringList names = shippedScenes();
        for (const QString &name : names) {
            paths.append(shippedScenePath(name));
        }
        for (const QString &path : qAsConst(paths)) {
            QTest::newRow(qPrintable(path)) << objectIn(path);
        }
        QTest::newRow("written") << QJsonDocument::fromJson(sceneText(readSceneFile(paths.constLast()).scene)).object();
    }

    void readerTakesWhatTheSchemaTakes()
    {
        QFETCH(QJsonObject, document);
        const Schema schema(objectIn(DOCUMENT_FOLDER "/setup.schema.json"));
        QVERIFY(schema.fits(document));
        QCOMPARE(errorsOf(document), QStringList());
        // What is read is written again, with nothing left out or exchanged.
        QJsonObject written = QJsonDocument::fromJson(sceneText(readScene(jsonOf(document), "file").scene)).object();
        const QJsonObject container = written.value("containers").toArray().at(0).toObject();
        for (const char *const single : {"curves", "selectedCurve", "options"}) { // of a set-up with one container
            written.insert(single, container.value(single));
        }
        QVERIFY2(isWithin(document, written), QJsonDocument(written).toJson());
        int tried = 0;
        int refused = 0;
        changeEverywhere(
            schema, document, objectIn(DOCUMENT_FOLDER "/setup.schema.json"), "set-up",
            [&](const QJsonValue &changed, const QString &where) {
                if (!changed.isObject() || dependsOnOthers(where)) {
                    return;
                }
                const bool isFit = schema.fits(changed);
                const QStringList errors = errorsOf(changed);
                ++tried;
                refused += isFit ? 0 : 1;
                if (isFit != errors.isEmpty()) {
                    QFAIL(qPrintable(where + (isFit ? " fits the schema: " : " does not fit: ") + errors.join('\n')));
                }
            });
        QVERIFY2(tried > 100 && refused > 50, qPrintable(QString("%1, %2").arg(tried).arg(refused)));
    }

    void everyFieldIsDescribed()
    {
        QFile page(DOCUMENT_FOLDER "/setups.md");
        QVERIFY(page.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(page.readAll());
        const QJsonObject definitions = objectIn(DOCUMENT_FOLDER "/setup.schema.json").value("$defs").toObject();
        for (const QJsonValue &definition : definitions) {
            const QJsonObject properties = definition.toObject().value("properties").toObject();
            const QStringList names = properties.keys();
            QStringList words = names;
            for (const QString &name : names) {
                const QJsonArray choices = properties.value(name).toObject().value("enum").toArray();
                for (int index = 0; index < choices.size(); ++index) {
                    if (choices.at(index).isString()) { // numbers are in a row
                        words.append(choices.at(index).toString());
                    }
                }
            }
            for (const QString &word : qAsConst(words)) {
                QVERIFY2(text.contains(QString("`%1`").arg(word)), qPrintable(word));
            }
        }
    }

private:
    /// Changes whose correctness depends on other parts of the document, which a schema cannot express.
    static bool dependsOnOthers(const QString &where)
    {
        static const QRegularExpression pattern(
            "^set-up\\.frontContainer|^set-up\\.modules(\\[\\d+\\])?(,| without)|\\.kind,|\\.key,|\\.pluggedIn,|"
            "\\.axis,| without axis|\\.axes(\\[\\d+\\])?,|\\.module,|\\.[xy],");
        return where.contains(pattern);
    }
};

GUARDED_TEST(SetUpSchemaTest)
#include "SetUpSchemaTest.moc"
