#include "GuardedTest.h"
#include "PluginHarness.h"
#include "ScriptedModule.h"

#include <QJsonObject>
#include <QPluginLoader>
#include <QProcess>
#include <QRandomGenerator>

namespace
{

/// A stepper that draws a square spiral: few points, wide apart, so that each can be found in the picture.
ScriptedModule *spiralModule()
{
    auto *const module = new ScriptedModule(QStringLiteral("BUS/Stepper"), 3, 4);
    for (int axis = 0; axis < 3; ++axis) {
        const QString group = QStringLiteral("axis%1").arg(axis);
        module->addParameter(group, "par::target", 0, "Target position");
        module->addParameter(group, "par::position", 1, "Actual position", "r");
    }
    const auto step = std::make_shared<int>(0);
    module->channel.answer = [step](const Command &request) {
        static const int xs[] = {-100, 100, 100, -100, -100, 50};
        static const int ys[] = {-100, -100, 100, 100, 0, 0};
        if (request.command() != 6 || request.type() != 1 || request.address() != 4) {
            return -1;
        }
        return request.motorBank() == 0 ? xs[*step % 6] : ys[(*step)++ % 6];
    };
    return module;
}

/// Pixel of a data point in a plot that shows -150 to 100 in both directions.
QPoint pixelOf(const QWidget *plot, double x, double y)
{
    const double width = plot->width() - 101;
    const double height = plot->height() - 101;
    return {qRound(50 + (x + 150) * width / 250), qRound(plot->height() - 41 - (y + 150) * height / 250)};
}

bool isNear(const QColor &color, const QColor &wanted)
{
    return qAbs(color.red() - wanted.red()) + qAbs(color.green() - wanted.green()) +
               qAbs(color.blue() - wanted.blue()) <
           150;
}

} // namespace

/// The built plugin file, from end to end, as a host uses it.
class PluginFileTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void metadata();
    void liveCurve();
    void twoClonesKeepApart();
    void recordingHoldsWhatTheModuleAnswered();
};

void PluginFileTest::metadata()
{
    const QPluginLoader loader(QStringLiteral(PLUGIN_FILE));
    const QJsonObject data = loader.metaData();
    QVERIFY(data.value(QStringLiteral("IID")).toString().endsWith(QStringLiteral("ContainerInterface/2.0")));
    QCOMPARE(data.value(QStringLiteral("className")).toString(), QStringLiteral("XYPlotter"));
    QCOMPARE(data.value(QStringLiteral("MetaData")).toObject(), QJsonObject({{"name", "Container"}}));
}

void PluginFileTest::liveCurve()
{
    QPluginLoader loader(QStringLiteral(PLUGIN_FILE));
    auto *const root = qobject_cast<ContainerInterface *>(loader.instance());
    QVERIFY2(root != nullptr, qPrintable(loader.errorString()));
    QCOMPARE(loader.instance(), root);
    {
        PluginHarness harness(root);
        harness.handler.addModulePlugin(spiralModule());
        harness.open();
        const QString module = QStringLiteral("BUS/Stepper");
        const QString position = QStringLiteral("Actual position");
        QVERIFY(harness.choose(0, 'X', module, QStringLiteral("Axis 0"), position));
        QVERIFY(harness.choose(0, 'Y', module, QStringLiteral("Axis 1"), position));

        const QColor crimson(220, 20, 60);
        QWidget *const plot = harness.plot();
        QVERIFY(!isNear(plot->grab().toImage().pixelColor(pixelOf(plot, 0, -100)), crimson));
        for (int tick = 0; tick < 6; ++tick) {
            harness.sampleTick();
            harness.refreshTick();
        }
        const auto curveIsShown = [&] {
            const QImage image = plot->grab().toImage();
            // On the lines between the points, but not in the corner that the spiral leaves open.
            return isNear(image.pixelColor(pixelOf(plot, -20, -100)), crimson) &&
                   isNear(image.pixelColor(pixelOf(plot, 20, 0)), crimson) &&
                   !isNear(image.pixelColor(pixelOf(plot, -100, -50)), crimson) &&
                   !isNear(image.pixelColor(pixelOf(plot, 20, 50)), crimson);
        };
        QVERIFY(curveIsShown());

        const QVector<QPointF> points = harness.points();
        harness.close();
        harness.sampleTick(); // goes on while closed, and is dropped
        harness.open();
        QVERIFY(curveIsShown());
        QCOMPARE(harness.points(), points);
        QCOMPARE(harness.table(0, 'Y')->currentIndex().row(), 1);
        harness.sampleTick();
        QCOMPARE(harness.points().size(), points.size() + 1);

        QVERIFY(harness.handler.removeModulePlugin(module));
        harness.sampleTick();
        harness.refreshTick();
        QTRY_COMPARE(harness.moduleBox(0, 'X')->currentIndex(), -1);
        harness.sampleTick();
        QCOMPARE(harness.points().size(), points.size() + 1);
        harness.handler.addModulePlugin(spiralModule());
        QTRY_COMPARE(harness.moduleBox(0, 'X')->itemText(0), QStringLiteral("  BUS/Stepper"));
        QVERIFY(harness.choose(0, 'X', module, QStringLiteral("Axis 0"), position));
        QVERIFY(harness.choose(0, 'Y', module, QStringLiteral("Axis 1"), position));
        harness.sampleTick();
        QCOMPARE(harness.points(), QVector<QPointF>({{-100, -100}}));
    }
    QVERIFY(loader.unload());
}

void PluginFileTest::twoClonesKeepApart()
{
    QPluginLoader loader(QStringLiteral(PLUGIN_FILE));
    auto *const root = qobject_cast<ContainerInterface *>(loader.instance());
    {
        PluginHarness one(root, QStringLiteral("One"));
        PluginHarness other(root, QStringLiteral("Other"));
        one.handler.addModulePlugin(spiralModule());
        other.handler.addModulePlugin(spiralModule());
        one.open();
        other.open();
        QVERIFY(one.choose(0, 'X', QStringLiteral("BUS/Stepper"), QStringLiteral("Axis 2"),
                           QStringLiteral("Actual position")));
        QCOMPARE(other.moduleBox(0, 'X')->currentIndex(), -1);
        QVERIFY(PluginHarness::pick(other.moduleBox(0, 'X'), QStringLiteral("BUS/Stepper")));
        QVERIFY(PluginHarness::pick(other.motorBox(0, 'X'), QStringLiteral("Axis 2")));
        QCOMPARE(one.table(0, 'X')->currentIndex().row(), 1);
        QCOMPARE(other.table(0, 'X')->currentIndex().row(), 0); // rows are remembered by each clone for itself
    }
    QVERIFY(loader.unload());
}

void PluginFileTest::recordingHoldsWhatTheModuleAnswered()
{
    QPluginLoader loader(QStringLiteral(PLUGIN_FILE));
    const QString path = temporaryPath(QStringLiteral("run.csv"));
    QVector<QPair<int, int>> answered;
    {
        PluginHarness harness(qobject_cast<ContainerInterface *>(loader.instance()));
        auto *const module = new ScriptedModule(QStringLiteral("BUS/m"), 1);
        module->addParameter("axis0", "par::x", 1, "a");
        module->addParameter("axis0", "par::y", 2, "b");
        QRandomGenerator random(7);
        int x = 0;
        module->channel.answer = [&](const Command &request) {
            const int value = static_cast<int>(random.generate()) >> random.bounded(32);
            if (request.type() == 1) {
                return x = value;
            }
            answered.append({x, value});
            return value;
        };
        harness.handler.addModulePlugin(module);
        harness.open();
        QVERIFY(harness.choose(0, 'X', QStringLiteral("BUS/m"), QString(), QStringLiteral("a")));
        QVERIFY(harness.choose(0, 'Y', QStringLiteral("BUS/m"), QString(), QStringLiteral("b")));
        harness.startLog(path);
        for (int tick = 0; tick < 500; ++tick) {
            harness.sampleTick();
        }
    }
    QVERIFY(loader.unload());

    // Read by a program that knows nothing of this one.
    QProcess python;
    python.start(
        QStringLiteral("python3"),
        {QStringLiteral("-c"),
         QStringLiteral("import csv,sys\nfor row in list(csv.reader(open(sys.argv[1], newline=''), delimiter=';'))"
                        "[2:]: print(int(row[0]), int(row[1]), int(row[2]), len(row))"),
         path});
    QVERIFY(python.waitForFinished());
    const QStringList lines = QString::fromLatin1(python.readAllStandardOutput()).split(QLatin1Char('\n'));
    int number = 0;
    for (int index = 1; index < answered.size(); ++index) { // the first point is not logged
        if (answered.at(index) != answered.at(index - 1)) {
            const QPair<int, int> point = answered.at(index);
            QCOMPARE(lines.value(number),
                     QStringLiteral("%1 %2 %3 4").arg(number + 1).arg(point.first).arg(point.second));
            ++number;
        }
    }
    QVERIFY(number > 450);
    QCOMPARE(lines.size(), number + 1); // and the end of the last line
}

GUARDED_TEST_MAIN(PluginFileTest)
#include "PluginFileTest.moc"
