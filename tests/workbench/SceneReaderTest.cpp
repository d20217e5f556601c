#include "setup/SceneReader.h"
#include "Mistakes.h"
#include "reading/TextLists.h"

namespace
{

/// A sound scene; rows of mistakes replace parts of it.
const char soundScene[] = R"({
    "title": "T", "seed": 7,
    "modules": [
        { "kind": "stepper-3", "key": "A",
          "axes": [ { "axis": 2, "motion": "sine", "amplitude": 5, "periodSeconds": 2, "phaseDegrees": 90,
                      "offset": -8 } ] },
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

/// Scene files, sound and with mistakes.
class SceneReaderTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void soundSceneIsRead()
    {
        const Scene scene = readScene(soundScene, QString()).scene;
        QCOMPARE(scene.stepsPerExchange(), 4); // two curves, each with two modules, share the time of a tick
        QCOMPARE(scene.seed, 7U);
        const MotionProgram motion = std::get<SimulationSettings>(scene.modules.at(0).family).motions.value(2);
        QVERIFY(motion.kind == MotionProgram::Kind::Sine && motion.amplitude == 5.0 && motion.periodSeconds == 2.0);
        QVERIFY(motion.phaseDegrees == 90.0 && motion.offset == -8.0);
        QCOMPARE(scene.curves.at(1).x.motor, QString("Register"));
        QVERIFY(scene.curves.at(1).x.isSigned && !scene.curves.at(0).x.isSigned);
        QVERIFY(!scene.showsLines && scene.isSquare && !scene.showsAll);
    }

    void nearestTextsComeFirst()
    {
        const QStringList names = {"Target position [microsteps]", "Actual position [microsteps]",
                                   "Winding temperature", "Actual velocity [microsteps/s]"};
        QCOMPARE(nearestTexts("Actual position", names, 1), QStringList(names.at(1))); // without its unit
        QCOMPARE(nearestTexts("actual velocity [mm/s]", names, 1), QStringList(names.at(3)));
        QCOMPARE(nearestTexts("Windign temperature", names, 1), QStringList(names.at(2)));
        QCOMPARE(nearestTexts("position", names, 2), names.mid(0, 2));
        QCOMPARE(nearestTexts("Actual position", names, 2).constLast(),
                 names.at(0)); // the units do not make it less alike
        QCOMPARE(nearestTexts("x", names).size(), 3);
        QCOMPARE(nearestTexts("x", {}), QStringList());
    }

    void mistakeIsNamed_data()
    {
        testRows<QString, QString, QString>(
            {"original", "mistake", "expected"},
            {{"broken syntax", "\"key\": \"B\"", "\"key\": B", ":7: expected JSON"},
             {"mistyped field", "\"signed\"", "\"sigend\"", "curves[1].x.sigend"},
             {"line break in a name", "\"signed\"", "\"sig\\nned\"", "curves[1].x.sig ned\": expected no such field"},
             {"title missing", "\"title\": \"T\",", "", "\"title\": expected a text"},
             {"seed with a fraction", ": 7", ": 7.5", "\"seed\": expected a whole number"},
             {"unknown kind", "servo-1", "servo-9", "modules[1].kind"},
             {"key taken", "\"key\": \"B\"", "\"key\": \"A\"", "modules[1].key"},
             {"axis beyond the last", "\"axis\": 2", "\"axis\": 3",
              "modules[0].axes[0].axis\": expected a whole number from 0 to 2"},
             {"axis without a number", "\"kind\": \"servo-1\",",
              "\"kind\": \"io-block\", \"axes\": [ { \"motion\": \"hold\" } ],",
              "modules[1].axes[0].axis\": expected no motion, because io-block"},
             {"no period", "Seconds\": 2", "Seconds\": 0", "modules[0].axes[0].periodSeconds"},
             {"module unknown", "\"module\": \"B\"", "\"module\": \"C\"", "curves[0].y.module"},
             {"two modules on one side", "\"A\", \"motor\": \"Register\"", "\"B\"", "curves[1].x.module"},
             {"no object at all", soundScene, "[]", "expected an object"}});
    }

    void mistakeIsNamed()
    {
        verifyMistakeIsNamed(soundScene, [](const QByteArray &json) { return readScene(json, "file").error; });
    }
};

GUARDED_TEST(SceneReaderTest)
#include "SceneReaderTest.moc"
