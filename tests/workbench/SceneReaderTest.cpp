#include "SceneReader.h"
#include "GuardedTest.h"

/// Scene files: those that are shipped, and those with mistakes.
class SceneReaderTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void shippedSceneIsSound_data();
    void shippedSceneIsSound();
    void fieldsArriveWhereTheyBelong();
    void mistakeIsNamed_data();
    void mistakeIsNamed();
    void missingFileIsNamed();
    void exchangesShareTheTimeOfATick();
};

namespace
{

/// A sound scene; rows of mistakes replace parts of it.
const char soundScene[] = R"({
    "title": "T", "seed": 7,
    "modules": [
        { "kind": "stepper-3", "key": "A",
          "axes": [ { "axis": 2, "motion": "sine", "amplitude": 5, "periodSeconds": 2, "phaseDegrees": 90,
                      "offset": -3 } ] },
        { "kind": "servo-1", "key": "B" }
    ],
    "curves": [
        { "x": { "module": "A", "motor": "Axis 0", "value": "V" }, "y": { "module": "B", "value": "W" } },
        { "x": { "module": "A", "motor": "Register", "value": "R", "signed": true },
          "y": { "module": "B", "value": "W" } }
    ],
    "options": { "lines": false, "square": true }
})";

} // namespace

void SceneReaderTest::shippedSceneIsSound_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("start") << startScenePath();
    const QStringList names = shippedScenes();
    for (const QString &name : {QStringLiteral("circle"), QStringLiteral("hysteresis"), QStringLiteral("phase"),
                                QStringLiteral("four-curves")}) {
        QVERIFY2(names.contains(name), qPrintable(name));
    }
    for (const QString &name : names) {
        QTest::newRow(qPrintable(name)) << shippedScenePath(name);
    }
}

void SceneReaderTest::shippedSceneIsSound()
{
    QFETCH(QString, path);
    const SceneResult result = readSceneFile(path);
    QCOMPARE(result.error, QString());
    QVERIFY(!result.scene.modules.isEmpty());
}

void SceneReaderTest::fieldsArriveWhereTheyBelong()
{
    const SceneResult result = readScene(soundScene, QStringLiteral("file"));
    QCOMPARE(result.error, QString());
    const Scene &scene = result.scene;
    QCOMPARE(scene.seed, 7U);
    QCOMPARE(scene.modules.size(), 2);
    const MotionProgram motion = scene.modules.at(0).motions.value(2);
    QVERIFY(motion.kind == MotionProgram::Kind::Sine);
    QCOMPARE(motion.amplitude, 5.0);
    QCOMPARE(motion.periodSeconds, 2.0);
    QCOMPARE(motion.phaseDegrees, 90.0);
    QCOMPARE(motion.offset, -3.0);
    QCOMPARE(scene.curves.size(), 2);
    QCOMPARE(scene.curves.at(0).y.module, QStringLiteral("B"));
    QCOMPARE(scene.curves.at(0).y.motor, QString());
    QCOMPARE(scene.curves.at(1).x.motor, QStringLiteral("Register"));
    QCOMPARE(scene.curves.at(1).x.value, QStringLiteral("R"));
    QVERIFY(scene.curves.at(1).x.isSigned && !scene.curves.at(0).x.isSigned);
    QVERIFY(!scene.showsLines && scene.isSquare && !scene.showsAll);
}

void SceneReaderTest::mistakeIsNamed_data()
{
    QTest::addColumn<QString>("original");
    QTest::addColumn<QString>("mistake");
    QTest::addColumn<QString>("place");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, const char *original, const char *mistake, const char *place,
                        const char *expected) {
        QTest::newRow(name) << QString::fromLatin1(original) << QString::fromLatin1(mistake)
                            << QString::fromLatin1(place) << QString::fromLatin1(expected);
    };
    row("broken syntax", "\"key\": \"B\"", "\"key\": B", "file:7", "JSON");
    row("mistyped field", "\"signed\"", "\"sigend\"", "curves[1].x.sigend", "signed");
    row("title missing", "\"title\": \"T\",", "", "title", "a text");
    row("seed with a fraction", "\"seed\": 7", "\"seed\": 7.5", "seed", "a whole number from 0 to 4294967295");
    row("seed as text", "\"seed\": 7", "\"seed\": \"7\"", "seed", "a whole number");
    row("unknown kind", "servo-1", "servo-9", "modules[1].kind", "\"servo-1\"");
    row("key taken", "\"key\": \"B\"", "\"key\": \"A\"", "modules[1].key", "no other module");
    row("unknown motion", "\"sine\"", "\"sin\"", "modules[0].axes[0].motion", "\"sine\"");
    row("no period", "\"periodSeconds\": 2", "\"periodSeconds\": 0", "modules[0].axes[0].periodSeconds", "above 0");
    row("negative amplitude", "\"amplitude\": 5", "\"amplitude\": -5", "modules[0].axes[0].amplitude", "0 or more");
    row("axis out of range", "\"axis\": 2", "\"axis\": -1", "modules[0].axes[0].axis", "from 0 to");
    row("module unknown", "\"module\": \"B\"", "\"module\": \"C\"", "curves[0].y.module", "\"A\", \"B\"");
    row("two modules on one side", "\"y\": { \"module\": \"B\", \"value\": \"W\" } }\n",
        "\"y\": { \"module\": \"A\", \"value\": \"W\" } }\n", "curves[1].y.module", "\"B\" as for the first curve");
    row("value empty", "\"value\": \"V\"", "\"value\": \" \"", "curves[0].x.value", "not empty");
    row("option no truth", "\"square\": true", "\"square\": 1", "options.square", "true or false");
    row("list instead of object", "\"options\": {", "\"seed2\": {", "seed2", "only: title");
}

void SceneReaderTest::mistakeIsNamed()
{
    QFETCH(QString, original);
    QFETCH(QString, mistake);
    QFETCH(QString, place);
    QFETCH(QString, expected);
    QString json = QString::fromLatin1(soundScene);
    QVERIFY(json.contains(original));
    json.replace(original, mistake);
    const QString error = readScene(json.toUtf8(), QStringLiteral("file")).error;
    QVERIFY2(error.startsWith(QStringLiteral("file:")), qPrintable(error));
    QVERIFY2(error.contains(place), qPrintable(error));
    QVERIFY2(error.contains(expected), qPrintable(error));
    QVERIFY(!error.contains(QLatin1Char('\n')));
}

void SceneReaderTest::missingFileIsNamed()
{
    const QString path = temporaryPath(QStringLiteral("none.json"));
    QVERIFY(readSceneFile(path).error.startsWith(path));
    QVERIFY(readScene("[]", QStringLiteral("file")).error.startsWith(QStringLiteral("file: expected an object")));
}

void SceneReaderTest::exchangesShareTheTimeOfATick()
{
    Scene scene = readScene(soundScene, QStringLiteral("file")).scene;
    QCOMPARE(scene.exchangesPerTick(), 4); // two curves, each with two modules
    QCOMPARE(scene.stepsPerExchange(), 4);
    scene.curves[0].y.module = scene.curves.at(0).x.module;
    scene.curves.removeLast();
    QCOMPARE(scene.exchangesPerTick(), 1);
    QCOMPARE(scene.stepsPerExchange(), 14);
    scene.curves.clear();
    QVERIFY(scene.stepsPerExchange() >= 1);
}

GUARDED_TEST_MAIN(SceneReaderTest)
#include "SceneReaderTest.moc"
