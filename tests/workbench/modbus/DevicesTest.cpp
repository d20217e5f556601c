#include "GuardedTest.h"
#include "ModbusProbe.h"
#include "modules/AnswerWatch.h"
#include "modules/ModuleRack.h"
#include "modules/modbus/DeviceTest.h"
#include "modules/modbus/DeviceText.h"
#include "modules/modbus/ModbusModule.h"
#include "modules/modbus/SerialPorts.h"
#include "setup/DeviceScene.h"
#include "setup/SceneReader.h"
#include "setup/SceneWriter.h"
#include "window/DeviceDialog.h"
#include "window/ModulePanel.h"

#include "host/PluginHandler.h"
#include "host/RegisterSet.h"

#include <memory>

namespace
{

/// Values at the pairs of a ModbusServer: the first register of each is known.
const char devicesMap[] = R"({
    "title": "Ser;ver", "values": [
        { "name": "P", "table": "holding register", "address": 100, "type": "uint16", "unit": "mm", "axis": 0 },
        { "name": "Q", "table": "input register", "address": 200, "type": "uint16", "axis": 1 },
        { "name": "V", "table": "coil", "address": 6, "group": "variable" },
        { "name": "W", "table": "coil", "address": 7, "group": "variable" },
        { "name": "D", "table": "discrete input", "address": 5, "group": "variable" },
        { "name": "R", "table": "holding register", "address": 300, "type": "uint16", "group": "register" },
        { "name": "S", "table": "holding register", "address": 302, "type": "uint16", "group": "register",
          "fields": [ { "name": "F", "bit": 4, "width": 8, "unit": "A" } ] },
        { "name": "E", "table": "holding register", "address": 304, "type": "uint16", "group": "register",
          "readAhead": false } ]
})";

const QString exampleMaps = SOURCE_FOLDER "/examples/modbus/";

DeviceSettings deviceAt(quint16 port, const QString &mapFile)
{
    return {ModbusProbe::tcp(port), mapFile};
}

/// A port of the loopback at which nobody listens.
quint16 closedPort()
{
    return ModbusServer().port();
}

QString labelText(const QWidget &window, const char *name)
{
    const auto *const label = window.findChild<QLabel *>(name);
    REQUIRE(label != nullptr);
    return label->text();
}

} // namespace

/// Devices as a user adds them: by text, by set-up and by dialog; what they list, and what the connection test reports.
class DevicesTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void texts_data()
    {
        testRows<QString>({"expected"},
                          {{"modbus-tcp:drive.local:502/1,m.json", "drive.local:502 1 m.json"},
                           {"modbus-tcp:[fe80::1]:1502/255,/a,b/m.json", "[fe80::1]:1502 255 /a,b/m.json"},
                           {"modbus-rtu:/dev/ttyUSB0:19200/17,m.json", "/dev/ttyUSB0 19200 8E1 17 m.json"},
                           {"modbus-rtu:/dev/ttyUSB0:115200:none:2/1,m.json", "/dev/ttyUSB0 115200 8N2 1 m.json"},
                           {"modbus-rtu:/dev/serial/by-path/pci-0:00:1.0-usb-0:1:1.0-port0:9600:odd/1,m",
                            "/dev/serial/by-path/pci-0:00:1.0-usb-0:1:1.0-port0 9600 8O1 1 m"},
                           {"modbus-tcp:drive.local/1,m.json", "expected modbus-tcp:HOST:PORT/UNIT,MAP or modbus-rtu:"},
                           {"modbus-tcp:drive.local:502/1", "expected modbus-tcp:"},
                           {"modbus-tcp:drive.local:70000/1,m", "1 to 65535"},
                           {"modbus-tcp:drive.local:502/256,m", "0 to 247, or 255"},
                           {"modbus-rtu:/dev/ttyUSB0:19201/1,m", "19201"},
                           {"modbus-rtu:/dev/ttyUSB0:19200:even:3/1,m", "1 or 2 stop bits"},
                           {"modbus-udp:drive.local:502/1,m", "expected modbus-tcp:"}});
    }

    void texts()
    {
        QFETCH(QString, expected);
        const DeviceTextResult result = deviceFromText(QTest::currentDataTag());
        const ConnectionSettings &connection = result.device.connection;
        const QString found =
            result.error.isEmpty()
                ? QString("%1 %2 %3").arg(connection.lineName()).arg(connection.unit).arg(result.device.mapFile)
                : result.error;
        QVERIFY2(result.error.isEmpty() ? found == expected : found.contains(expected), qPrintable(found));
    }

    void setUpsHoldDevices()
    {
        SceneResult result = readScene(R"({"title": "T", "curves": [], "modules": [
            {"key": "A", "kind": "modbus-tcp", "host": "drive", "port": 1502, "unit": 7, "map": "/maps/t.json"},
            {"key": "B", "kind": "modbus-rtu", "serialPort": "/dev/ttyS9", "baud": 9600, "parity": "none",
             "stopBits": 2, "unit": 3, "map": "/maps/r.json"} ]})",
                                       "file");
        for (int time = 0; time < 2; ++time) { // the second one is written by the program
            QCOMPARE(result.error, QString());
            QStringList found;
            for (const ModuleSettings &module : qAsConst(result.scene.modules)) {
                const auto &device = std::get<DeviceSettings>(module.family);
                found.append(QString("%1 unit %2 %3")
                                 .arg(device.connection.lineName())
                                 .arg(device.connection.unit)
                                 .arg(device.mapFile));
            }
            QCOMPARE(found, QStringList({"drive:1502 unit 7 /maps/t.json", "/dev/ttyS9 9600 8N2 unit 3 /maps/r.json"}));
            result = readScene(sceneText(result.scene), "file");
        }
    }

    void firstCurveIsOfTheFirstAxis()
    {
        Scene scene;
        QCOMPARE(addDevices(scene, {deviceAt(1, exampleMaps + "servo-drive.json"),
                                    deviceAt(2, exampleMaps + "stepper-block.json")}),
                 QString());
        QCOMPARE(scene.modules.at(1).key, QString("DEV1/stepper-block"));
        QCOMPARE(scene.curves.size(), 1);
        QCOMPARE(scene.curves.at(0).x.value, QString("Actual position [increments]"));
        QCOMPARE(scene.curves.at(0).y.value, QString("Actual velocity [increments/s]"));
        QCOMPARE(scene.curves.at(0).y.motor, QString("Axis 0"));

        const QString path =
            written("map.json", R"({"title": "T", "values": [ {"name": "A", "table": "coil", "address": 0},
                                                  {"name": "B", "table": "coil", "address": 1} ]})");
        Scene registers;
        QCOMPARE(addDevices(registers, {deviceAt(1, path)}), QString());
        QCOMPARE(registers.curves.at(0).x.motor, QString("Register"));
        QCOMPARE(registers.curves.at(0).y.value, QString("B"));
        written("map.json", "{}");
        QVERIFY(addDevices(registers, {deviceAt(1, path)}).startsWith(path));
    }

    void serialPortsThatAreThere()
    {
        const QDir root(temporaryPath("root"));
        for (const char *const folder : {"dev/serial/by-id", "sys/class/tty/ttyS0", "sys/class/tty/ttyS1"}) {
            QVERIFY(root.mkpath(folder));
        }
        for (const char *const device : {"ttyS0", "ttyS1", "ttyS2", "ttyUSB0", "ttyUSB1", "ttyACM0", "tty1"}) {
            written(QString("root/dev/") + device, QByteArray());
        }
        written("root/sys/class/tty/ttyS0/type", "4\n");
        written("root/sys/class/tty/ttyS1/type", "0\n"); // nothing is behind it
        QVERIFY(QFile::link("../../ttyUSB1", root.filePath("dev/serial/by-id/usb-X")));
        QStringList paths;
        const auto ports = serialPorts(root.path());
        for (const SerialPort &port : ports) {
            paths.append(root.relativeFilePath(port.path));
        }
        QCOMPARE(paths.join(' '), QString("dev/serial/by-id/usb-X dev/ttyACM0 dev/ttyUSB0 dev/ttyS0"));
    }

    void moduleListsAndReads()
    {
        ModbusServer server;
        PluginHandler handler;
        ModuleRack rack(&handler, SimulationClock::Drive::Exchanges, 1);
        QCOMPARE(rack.add({"DEV0/server", deviceAt(server.port(), serverMapFile())}), QString());
        auto *const module = rack.moduleAs<ModbusModule>(0);
        QVERIFY(module != nullptr && module->numberOfAxes() == 2);
        QCOMPARE(module->getAliasName(), QString("Ser_ver (DEV0)"));
        QVERIFY(module->getParameterMapByName("axis2") == nullptr);
        const Parameter position = module->getParameterMapByName("axis0")->first();
        QCOMPARE(position.name + position.nameSuffix, QString("P[mm]"));
        const auto numberOf = [module](const char *map, const char *name) {
            for (const Parameter &parameter : qAsConst(*module->getParameterMapByName(map))) {
                if (parameter.name == name) {
                    return parameter.number;
                }
            }
            qFatal("no parameter %s", name);
        };
        const auto *const plain = module->registers().at(0);
        const auto *const set = qobject_cast<RegisterSet *>(module->registers().at(1));
        QVERIFY(set != nullptr && set->getFractions().size() == 1);
        QCOMPARE(set->getFractions().at(0)->getTitle(), QString("F [A]"));

        const int address = module->moduleAddress();
        Exchange exchange(
            {requestFor(address, 6, 0, position.number), requestFor(address, 6, 1, numberOf("axis1", "Q")),
             requestFor(address, 10, 2, numberOf("global2", "V")), requestFor(address, 10, 2, numberOf("global2", "W")),
             requestFor(address, 10, 2, numberOf("global2", "D")), requestFor(address, 148, 0, int(plain->getOffset())),
             requestFor(address, 148, 0, 77)});
        QVERIFY(waitUntil([&] { return exchange.with(module->commandHandlerInterface()); }));
        const QVector<int> expected = {ModbusServer::marker(ModbusTable::HoldingRegister, 100),
                                       ModbusServer::marker(ModbusTable::InputRegister, 200),
                                       1,
                                       0,
                                       1, // 6 and 5 are on
                                       ModbusServer::marker(ModbusTable::HoldingRegister, 300)};
        for (int index = 0; index < expected.size(); ++index) {
            QCOMPARE(exchange.reply(index).value(), expected.at(index));
        }
        QVERIFY(exchange.reply(6).status() == Command::Status::Refused);
    }

    void tryingSaysWhatAnswered()
    {
        const QString map = serverMapFile();
        {
            ModbusServer server;
            const QString value = QLocale().toString(ModbusServer::marker(ModbusTable::HoldingRegister, 100));
            QCOMPARE(triedWords(deviceAt(server.port(), map)),
                     QString("true Unit 1 answers: \"P [mm]\" is %1.").arg(value));
            const QString noMap = triedWords(deviceAt(server.port(), "none"));
            QVERIFY2(noMap.startsWith("false Unit 1 answers. The register map"), qPrintable(noMap));
            server.hole = 100;
            const QString refused = triedWords(deviceAt(server.port(), map));
            QVERIFY2(refused.startsWith("false") && refused.contains("illegal data address"), qPrintable(refused));
            server.isSilent = true;
            const QString silent = triedWords(deviceAt(server.port(), map));
            QVERIFY2(silent.contains("No answer"), qPrintable(silent));
        }
        const QString closed = triedWords(deviceAt(closedPort(), map));
        QVERIFY2(closed.contains("refuses the connection"), qPrintable(closed));
        DeviceSettings serial{{}, map};
        serial.connection.medium = ConnectionSettings::Medium::Rtu;
        serial.connection.serialPort = temporaryPath("port");
        const QString missing = triedWords(serial);
        QVERIFY2(missing.contains("no such serial port"), qPrintable(missing));
        serial.connection.serialPort.clear();
        QCOMPARE(triedWords(serial), QString("false ") + serial.connection.problem());
    }

    /// A device that is in the list already, and has been in trouble when it was last read.
    void tryingFindsThatTroubleHasPassed()
    {
        ModbusServer server;
        const DeviceSettings device = deviceAt(server.port(), serverMapFile());
        PluginHandler handler;
        ModuleRack rack(&handler, SimulationClock::Drive::Exchanges, 1);
        QCOMPARE(rack.add({"DEV0/server", device}), QString());
        const auto state = [&rack] { return rack.moduleAs<ModbusModule>(0)->state(); };
        QVector<RegisterSpan> sent;
        const auto isSent = [&sent](int address) {
            return std::any_of(sent.cbegin(), sent.cend(), [address](const RegisterSpan &request) {
                return request.table == ModbusTable::HoldingRegister && request.address <= address &&
                       address < request.end();
            });
        };
        QVERIFY(waitUntil([&] {
            sent += server.takeRequests();
            return isSent(302);
        }));
        QVERIFY(!isSent(304)); // which the map excludes from what is read ahead
        constexpr int busy = 6;
        server.exception = busy;
        QVERIFY(waitUntil([&] { return state().trouble.contains("device busy"); }));
        server.exception = 0;
        const QString words = triedWords(device);
        QVERIFY2(words.startsWith("true Unit 1 answers"), qPrintable(words));
        QVERIFY(waitUntil([&] { return state().isKnownToAnswer; }));
        server.isSilent = true; // what was read ahead just now is no answer to the test
        const QString silent = triedWords(device);
        QVERIFY2(silent.contains("No answer"), qPrintable(silent));
    }

    void dialogAddsAndChanges()
    {
        PluginHandler handler;
        ModuleRack rack(&handler, SimulationClock::Drive::Exchanges, 1);
        AnswerWatch watch(&rack);
        ModulePanel panel(&rack, &watch);
        ModbusServer server;
        {
            DeviceDialog dialog(&rack, ConnectionSettings::Medium::Tcp);
            dialog.show();
            QVERIFY(QTest::qWaitForWindowActive(&dialog));
            dialog.accept();
            QVERIFY(dialog.isVisible() && rack.count() == 0);
            QVERIFY(labelText(dialog, "testResult").contains("The host is missing"));
            // By keys alone: host, port, unit, map.
            for (const QString &text : {QString("127.0.0.1"), QString::number(server.port()), QString("1"),
                                        QDir::current().relativeFilePath(serverMapFile())}) {
                QWidget *const field = dialog.focusWidget();
                QTest::keySequence(field, QKeySequence::SelectAll);
                QTest::keyClicks(field, text);
                QTest::keyClick(field, Qt::Key_Tab);
            }
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
            QVERIFY2(!dialog.isVisible(), qPrintable(labelText(dialog, "testResult")));
        }
        QCOMPARE(rack.settings(0).key, QString("DEV0/map"));
        QVERIFY(QDir::isAbsolutePath(rack.device(0)->mapFile)); // for set-ups that are saved in other folders
        const auto isNotPlotted = [&] {
            watch.poll(0);
            return labelText(panel, "deviceState") == "Connected and answering, not plotted";
        };
        QVERIFY(waitUntil(isNotPlotted));
        auto *const module = rack.moduleAs<ModbusModule>(0);
        const int position = module->getParameterMapByName("axis0")->first().number;
        Exchange exchange({requestFor(module->moduleAddress(), 6, 0, position)});
        QVERIFY(waitUntil([&] { return exchange.with(module->commandHandlerInterface()) && !isNotPlotted(); }));
        QVERIFY(waitUntil(isNotPlotted)); // nobody asks any more
        {
            DeviceDialog dialog(&rack, 0);
            ModuleSettings changed = dialog.settings();
            QCOMPARE(std::get<DeviceSettings>(changed.family).connection.port, server.port());
            std::get<DeviceSettings>(changed.family).connection.port = closedPort();
            QCOMPARE(rack.replace(0, changed), QString());
        }
        QVERIFY(waitUntil([&] {
            watch.poll(0);
            return labelText(panel, "trouble").contains("refuses the connection");
        }));
        partCalled<QPushButton>(panel, "Remove")->click();
        QCOMPARE(rack.count(), 0);
    }

private:
    QString serverMapFile() const
    {
        return written("map.json", devicesMap);
    }

    /// "true" or "false", and the words.
    static QString triedWords(const DeviceSettings &settings)
    {
        DeviceTest test(settings);
        QString result;
        QObject::connect(&test, &DeviceTest::finished, [&result](bool isAnswered, const QString &words) {
            result = QVariant(isAnswered).toString() + QLatin1Char(' ') + words;
        });
        test.start();
        REQUIRE(result.isEmpty()); // it waits for nothing
        REQUIRE(QTest::qWaitFor([&result] { return !result.isEmpty(); }, 20000));
        return result;
    }
};

GUARDED_TEST(DevicesTest)
#include "DevicesTest.moc"
