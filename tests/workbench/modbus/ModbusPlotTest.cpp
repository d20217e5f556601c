#include "FaultyLine.h"
#include "GuardedTest.h"
#include "ModbusProbe.h"
#include "PluginHarness.h"
#include "XYPlotter.h"
#include "modules/modbus/ModbusModule.h"
#include "modules/modbus/RegisterMapReader.h"

#include <memory>

namespace
{

constexpr int curveCount = 4;
constexpr int sampleIntervalMs = 14; // of the plugin
constexpr int valueDistance = 130;   // of two values: none are read by one request

quint16 markerOf(int value)
{
    return ModbusServer::marker(ModbusTable::HoldingRegister, 10 + value * valueDistance);
}

/// "V0" to "V7" hold still, "C0" to "C7" behind them count the requests.
RegisterMap plotMap()
{
    QString values;
    for (int value = 0; value < 2 * curveCount; ++value) {
        values += QStringLiteral(
                      R"(%1{"name": "V%2", "table": "holding register", "address": %3, "type": "uint16", "axis": 0},
                              {"name": "C%2", "table": "input register", "address": %4, "type": "uint16", "axis": 0})")
                      .arg(values.isEmpty() ? "" : ",")
                      .arg(value)
                      .arg(10 + value * valueDistance)
                      .arg(11 + value * valueDistance);
    }
    const RegisterMapResult result =
        readRegisterMap(QStringLiteral(R"({"title": "T", "values": [%1]})").arg(values).toUtf8(), QString());
    REQUIRE(result.error.isEmpty());
    return result.map;
}

} // namespace

/// Devices on slow lines in the plot.
class ModbusPlotTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void everyPointHasValuesOfTheDevice_data()
    {
        testRows<int>({"baud"}, {{"9600", 9600}, {"19200", 19200}});
    }

    /// Four curves that are chosen at once, recorded, and then given other values, which ends the recording.
    void everyPointHasValuesOfTheDevice()
    {
        QFETCH(int, baud);
        FaultyLine line;
        line.baud = baud;
        ModbusServer server(line.serverPort(), baud);
        XYPlotter root;
        PluginHarness harness(&root);
        auto module = std::make_unique<ModbusModule>("DEV0/map", &harness.handler,
                                                     ModbusProbe::serial(line.clientPort(), baud), plotMap());
        REQUIRE(harness.handler.addModulePlugin(module.get()));
        const ModbusModule *const device = module.release();
        harness.open();
        QVector<RegisterSpan> sent;
        QVERIFY(waitUntil([&] {
            sent += server.takeRequests();
            return device->state().isKnownToAnswer && sent.size() >= 8 * curveCount; // each value twice
        }));

        for (int phase = 0; phase < 2; ++phase) {
            const QString path = temporaryPath(QString("log%1.csv").arg(phase));
            for (int curve = 0; curve < curveCount; ++curve) {
                const QString number = QString::number(curve + phase * curveCount);
                QVERIFY(harness.choose(curve, 'X', "DEV0/map", QString(), QLatin1Char('V') + number));
                QVERIFY(harness.choose(curve, 'Y', "DEV0/map", QString(), QLatin1Char('C') + number));
                if (!harness.curveBox(curve)->isChecked()) {
                    harness.curveBox(curve)->click();
                }
            }
            server.takeRequests();
            for (int attempt = 0; attempt < 5 && (attempt == 0 || !haveAllPoints(&harness));
                 ++attempt) { // the machine may stand still
                int requests = 0;
                for (int tick = 0; tick < 2000 && requests < 6 * 2 * curveCount; ++tick) { // some rounds of all values
                    requests += server.takeRequests().size();
                    harness.sampleTick();
                    if (tick == 0 && attempt == 0) {
                        harness.startLog(path); // which has columns for the curves that have points
                    }
                    QTest::qSleep(sampleIntervalMs);
                }
            }
            for (int curve = 0; curve < curveCount; ++curve) {
                const QVector<QPointF> points = harness.points(curve);
                QVERIFY(points.size() > 2);
                for (int index = 0; index < points.size(); ++index) {
                    QCOMPARE(points.at(index).x(), double(markerOf(curve + phase * curveCount)));
                    QVERIFY(points.at(index).y() > 0);
                    QVERIFY(index == 0 || points.at(index).y() >= points.at(index - 1).y());
                }
            }
            checkLog(path, phase * curveCount);
        }
    }

private:
    static bool haveAllPoints(PluginHarness *harness)
    {
        for (int curve = 0; curve < curveCount; ++curve) {
            if (harness->points(curve).size() <= 2) {
                return false;
            }
        }
        return true;
    }

    /// All lines have values of the curves, the first curve's X being that of the value \a first.
    static void checkLog(const QString &path, int first)
    {
        QFile log(path);
        REQUIRE(log.open(QIODevice::ReadOnly));
        const QList<QByteArray> lines = log.readAll().split('\n').mid(2);
        int logged = 0;
        for (const QByteArray &text : lines) {
            const QList<QByteArray> columns = text.trimmed().split(';');
            for (int curve = 0; columns.size() > 2 * curve + 2; ++curve) {
                const QByteArray &x = columns.at(2 * curve + 1);
                if (!x.isEmpty()) {
                    QCOMPARE(x.toInt(), int{markerOf(first + curve)});
                    ++logged;
                }
            }
        }
        QVERIFY2(logged > curveCount, qPrintable(QString::number(logged)));
    }
};

GUARDED_TEST(ModbusPlotTest)
#include "ModbusPlotTest.moc"
