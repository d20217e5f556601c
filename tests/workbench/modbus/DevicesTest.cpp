#include "GuardedTest.h"
#include "ModbusProbe.h"
#include "modules/AnswerWatch.h"
#include "modules/ModuleRack.h"
#include "modules/modbus/DeviceTest.h"
#include "modules/modbus/DeviceText.h"
#include "modules/modbus/ModbusModule.h"
#include "modules/modbus/SerialPorts.h"
#include "reading/FieldReader.h"
#include "setup/DeviceFields.h"
#include "setup/DeviceScene.h"
#include "setup/SceneReader.h"
#include "window/DeviceDialog.h"
#include "window/ModulePanel.h"

#include "host/PluginHandler.h"
#include "host/RegisterSet.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>

#include <memory>

namespace
{

/// Values at the pairs of a ModbusServer: the first register of each is known.
const char serverMap[] = R"({
    "title": "Server", "values": [
        { "name": "P", "table": "holding register", "address": 100, "type": "uint16", "unit": "mm", "axis": 0 },
        { "name": "Q", "table": "input register", "address": 200, "type": "uint16", "axis": 1 },
        { "name": "V", "table": "coil", "address": 6, "group": "variable" },
        { "name": "R", "table": "holding register", "address": 300, "type": "uint16", "group": "register" },
        { "name": "S", "table": "holding register", "address": 302, "type": "uint16", "group": "register",
          "fields": [ { "name": "F", "bit": 4, "width": 8, "unit": "A" } ] },
        { "name": "E", "table": "holding register", "address": 304, "type": "uint16", "group": "register",
          "readAhead": false } ]
})";

const QString examples = QStringLiteral(SOURCE_FOLDER "/examples/modbus/");

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
    const auto *const label = window.findChild<QLabel *>(QLatin1String(name));
    REQUIRE(label != nullptr);
    return label->text();
}

} // namespace

/// Devices as a person adds them: by text, by set-up and by dialog; what they list, and what a try to reach them brings.
class DevicesTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void texts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *text, const char *expected) {
            QTest::newRow(text) << QString(text) << QString(expected);
        };
        row("modbus-tcp:drive.local:502/1,m.json", "drive.local:502 1 m.json");
        row("modbus-tcp:[fe80::1]:1502/255,/a,b/m.json", "[fe80::1]:1502 255 /a,b/m.json");
        row("modbus-rtu:/dev/ttyUSB0:19200/17,m.json", "/dev/ttyUSB0 19200 8E1 17 m.json");
        row("modbus-rtu:/dev/ttyUSB0:115200:none:2/1,m.json", "/dev/ttyUSB0 115200 8N2 1 m.json");
        row("modbus-rtu:/dev/serial/by-path/pci-0:00:1.0-usb-0:1:1.0-port0:9600:odd/1,m",
            "/dev/serial/by-path/pci-0:00:1.0-usb-0:1:1.0-port0 9600 8O1 1 m");
        row("modbus-tcp:drive.local/1,m.json", "expected modbus-tcp:HOST:PORT/UNIT,MAP or modbus-rtu:");
        row("modbus-tcp:drive.local:502/1", "expected modbus-tcp:");
        row("modbus-tcp:drive.local:70000/1,m", "1 to 65535");
        row("modbus-tcp:drive.local:502/256,m", "0 to 247, or 255");
        row("modbus-rtu:/dev/ttyUSB0:19201/1,m", "19201");
        row("modbus-rtu:/dev/ttyUSB0:19200:even:3/1,m", "1 or 2 stop bits");
        row("modbus-udp:drive.local:502/1,m", "expected modbus-tcp:");
    }

    void texts()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        const DeviceTextResult result = deviceFromText(text);
        const ConnectionSettings &connection = result.device.connection;
        const QString found =
            result.error.isEmpty()
                ? QStringLiteral("%1 %2 %3").arg(connection.lineName()).arg(connection.unit).arg(result.device.mapFile)
                : result.error;
        QVERIFY2(result.error.isEmpty() ? found == expected : found.contains(expected), qPrintable(found));
    }

    void setUpsHoldDevices()
    {
        const QString text = QStringLiteral(R"({"title": "T", "curves": [], "modules": [
            {"key": "A", "kind": "modbus-tcp", "host": "drive", "port": 1502, "unit": 7, "map": "m.json"},
            {"key": "B", "kind": "modbus-rtu", "serialPort": "/dev/ttyS9", "baud": 9600, "parity": "none", "stopBits": 2,
             "unit": 3, "map": "/maps/m.json"} ]})");
        const QString path = temporaryPath(QStringLiteral("set-up.json"));
        write(path, text.toUtf8());
        const SceneResult result = readSceneFile(path);
        QCOMPARE(result.error, QString());
        QList<ModuleSettings> modules = result.scene.modules;
        const auto device = [&modules](int index) { return std::get<DeviceSettings>(modules.at(index).family); };
        QCOMPARE(device(0).connection.lineName(), QStringLiteral("drive:1502"));
        QCOMPARE(device(0).mapFile, QFileInfo(path).absolutePath() + QStringLiteral("/m.json"));
        QCOMPARE(device(1).connection.lineName(), QStringLiteral("/dev/ttyS9 9600 8N2"));
        QCOMPARE(device(1).mapFile, QStringLiteral("/maps/m.json"));
        for (const ModuleSettings &module : qAsConst(modules)) {
            FieldReader reader(QStringLiteral("file"));
            bool isPluggedIn = false;
            const ModuleSettings again = readModule(reader, writeModule(module, true), QString(), isPluggedIn);
            QCOMPARE(reader.error(), QString());
            const DeviceSettings &before = std::get<DeviceSettings>(module.family);
            const DeviceSettings &after = std::get<DeviceSettings>(again.family);
            QVERIFY(after.connection == before.connection && after.mapFile == before.mapFile);
        }
        const QStringList mistakes[] = {
            {"1502", "0", "modules[0].port"},    {"\"host\"", "\"hots\"", "modules[0].hots"},
            {"9600", "9601", "modules[1].baud"}, {"\"none\"", "\"no\"", "modules[1].parity"},
            {": 3,", ": 0,", "modules[1].unit"}, {"\"drive\"", "\"\"", "modules[0].host"}};
        for (const QStringList &mistake : mistakes) {
            const QString error =
                readScene(QString(text).replace(mistake.at(0), mistake.at(1)).toUtf8(), QStringLiteral("file"))
                    .errors.join(QLatin1Char('\n'));
            QVERIFY2(error.contains(mistake.at(2)), qPrintable(mistake.at(2) + error));
        }
    }

    void firstCurveIsOfTheFirstAxis()
    {
        Scene scene;
        QCOMPARE(addDevices(scene, {deviceAt(1, examples + QStringLiteral("servo-drive.json")),
                                    deviceAt(2, examples + QStringLiteral("stepper-block.json"))}),
                 QString());
        QCOMPARE(scene.modules.at(1).key, QStringLiteral("DEV1/stepper-block"));
        QCOMPARE(scene.curves.size(), 1);
        QCOMPARE(scene.curves.at(0).x.value, QStringLiteral("Actual position [increments]"));
        QCOMPARE(scene.curves.at(0).y.value, QStringLiteral("Actual velocity [increments/s]"));
        QCOMPARE(scene.curves.at(0).y.motor, QStringLiteral("Axis 0"));

        const QString path = temporaryPath(QStringLiteral("map.json"));
        write(path, R"({"title": "T", "values": [ {"name": "A", "table": "coil", "address": 0},
                                                  {"name": "B", "table": "coil", "address": 1} ]})");
        Scene registers;
        QCOMPARE(addDevices(registers, {deviceAt(1, path)}), QString());
        QCOMPARE(registers.curves.at(0).x.motor, QStringLiteral("Register"));
        QCOMPARE(registers.curves.at(0).y.value, QStringLiteral("B"));
        write(path, "{}");
        QVERIFY(addDevices(registers, {deviceAt(1, path)}).startsWith(path));
    }

    void serialPortsThatAreThere()
    {
        const QDir root(temporaryPath(QStringLiteral("root")));
        for (const char *const folder : {"dev/serial/by-id", "sys/class/tty/ttyS0", "sys/class/tty/ttyS1"}) {
            QVERIFY(root.mkpath(QLatin1String(folder)));
        }
        for (const char *const device : {"ttyS0", "ttyS1", "ttyS2", "ttyUSB0", "ttyUSB1", "ttyACM0", "tty1"}) {
            write(root.filePath(QStringLiteral("dev/") + QLatin1String(device)), QByteArray());
        }
        write(root.filePath(QStringLiteral("sys/class/tty/ttyS0/type")), "4\n");
        write(root.filePath(QStringLiteral("sys/class/tty/ttyS1/type")), "0\n"); // nothing is behind it
        QVERIFY(QFile::link(QStringLiteral("../../ttyUSB1"), root.filePath(QStringLiteral("dev/serial/by-id/usb-X"))));
        QStringList paths;
        const auto ports = serialPorts(root.path());
        for (const SerialPort &port : ports) {
            paths.append(root.relativeFilePath(port.path));
        }
        QCOMPARE(paths.join(QLatin1Char(' ')),
                 QStringLiteral("dev/serial/by-id/usb-X dev/ttyACM0 dev/ttyUSB0 dev/ttyS0"));
    }

    void moduleListsAndReads()
    {
        ModbusServer server;
        PluginHandler handler;
        ModuleRack rack(&handler, SimulationClock::Drive::Exchanges, 1);
        QCOMPARE(rack.add({QStringLiteral("DEV0/server"), deviceAt(server.port(), serverMapFile())}), QString());
        auto *const module = rack.moduleAs<ModbusModule>(0);
        QVERIFY(module != nullptr && module->numberOfAxes() == 2);
        QCOMPARE(module->getAliasName(), QStringLiteral("Server (DEV0)"));
        QVERIFY(module->getParameterMapByName(QStringLiteral("axis2")) == nullptr);
        const Parameter position = module->getParameterMapByName(QStringLiteral("axis0"))->first();
        QCOMPARE(position.name + position.nameSuffix, QStringLiteral("P[mm]"));
        const Parameter other = module->getParameterMapByName(QStringLiteral("axis1"))->first();
        const Parameter coil = module->getParameterMapByName(QStringLiteral("global2"))->first();
        const auto *const plain = module->registers().at(0);
        const auto *const set = qobject_cast<RegisterSet *>(module->registers().at(1));
        QVERIFY(set != nullptr && set->getFractions().size() == 1);
        QCOMPARE(set->getFractions().at(0)->getTitle(), QStringLiteral("F [A]"));

        CommandCombo combos[5];
        const int requests[5][3] = {{6, 0, position.number},
                                    {6, 1, other.number},
                                    {10, 2, coil.number},
                                    {148, 0, plain->getOffset()},
                                    {148, 0, 77}};
        QList<CommandCombo *> list;
        for (int i = 0; i < 5; ++i) {
            combos[i].request.setAddress(module->moduleAddress());
            combos[i].request.setCommand(quint8(requests[i][0]));
            combos[i].request.setMotorBank(quint8(requests[i][1]));
            combos[i].request.setType(quint16(requests[i][2]));
            list.append(&combos[i]);
        }
        QVERIFY(waitUntil([&] {
            module->commandHandlerInterface()->sendCommandCombos(list);
            return combos[0].reply.status() == Command::Status::Answered;
        }));
        QCOMPARE(combos[0].reply.value(), qint32(ModbusServer::marker(ModbusTable::HoldingRegister, 100)));
        QCOMPARE(combos[1].reply.value(), qint32(ModbusServer::marker(ModbusTable::InputRegister, 200)));
        QCOMPARE(combos[2].reply.value(), 1); // 6 is a multiple of 3
        QCOMPARE(combos[3].reply.value(), qint32(ModbusServer::marker(ModbusTable::HoldingRegister, 300)));
        QVERIFY(combos[4].reply.status() == Command::Status::Refused);
    }

    void tryingSaysWhatAnswered()
    {
        const QString map = serverMapFile();
        {
            ModbusServer server;
            const QString value = QLocale().toString(ModbusServer::marker(ModbusTable::HoldingRegister, 100));
            QCOMPARE(triedWords(deviceAt(server.port(), map)),
                     QStringLiteral("true Unit 1 answers: \"P [mm]\" is %1.").arg(value));
            const QString noMap = triedWords(deviceAt(server.port(), QStringLiteral("none")));
            QVERIFY2(noMap.startsWith(QStringLiteral("false Unit 1 answers. The register map")), qPrintable(noMap));
            server.hole = 100;
            const QString refused = triedWords(deviceAt(server.port(), map));
            QVERIFY2(refused.startsWith(QStringLiteral("false")) && refused.contains("illegal data address"),
                     qPrintable(refused));
            server.isSilent = true;
            const QString silent = triedWords(deviceAt(server.port(), map));
            QVERIFY2(silent.contains(QStringLiteral("No answer")), qPrintable(silent));
        }
        const QString closed = triedWords(deviceAt(closedPort(), map));
        QVERIFY2(closed.contains(QStringLiteral("refuses the connection")), qPrintable(closed));
        DeviceSettings serial{{}, map};
        serial.connection.medium = ConnectionSettings::Medium::Rtu;
        serial.connection.serialPort = temporaryPath(QStringLiteral("port"));
        const QString missing = triedWords(serial);
        QVERIFY2(missing.contains(QStringLiteral("no such serial port")), qPrintable(missing));
        serial.connection.serialPort.clear();
        QCOMPARE(triedWords(serial), QStringLiteral("false ") + serial.connection.problem());
    }

    /// A device that is in the list already, and has been in trouble when it was last read.
    void tryingFindsThatTroubleHasPassed()
    {
        ModbusServer server;
        const DeviceSettings device = deviceAt(server.port(), serverMapFile());
        PluginHandler handler;
        ModuleRack rack(&handler, SimulationClock::Drive::Exchanges, 1);
        QCOMPARE(rack.add({QStringLiteral("DEV0/server"), device}), QString());
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
        QVERIFY(waitUntil([&] { return state().trouble.contains(QStringLiteral("device busy")); }));
        server.exception = 0;
        const QString words = triedWords(device);
        QVERIFY2(words.startsWith(QStringLiteral("true Unit 1 answers")), qPrintable(words));
        QVERIFY(waitUntil([&] { return state().isKnownToAnswer; }));
        server.isSilent = true; // what was read ahead just now is no answer to the test
        const QString silent = triedWords(device);
        QVERIFY2(silent.contains(QStringLiteral("No answer")), qPrintable(silent));
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
            QVERIFY(labelText(dialog, "testResult").contains(QStringLiteral("The host is missing")));
            // By keys alone: host, port, unit, map.
            for (const QString &text : {QStringLiteral("127.0.0.1"), QString::number(server.port()),
                                        QStringLiteral("1"), QDir::current().relativeFilePath(serverMapFile())}) {
                QWidget *const field = dialog.focusWidget();
                QTest::keySequence(field, QKeySequence::SelectAll);
                QTest::keyClicks(field, text);
                QTest::keyClick(field, Qt::Key_Tab);
            }
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
            QVERIFY2(!dialog.isVisible(), qPrintable(labelText(dialog, "testResult")));
        }
        QCOMPARE(rack.settings(0).key, QStringLiteral("DEV0/map"));
        QVERIFY(QDir::isAbsolutePath(rack.device(0)->mapFile)); // for set-ups that are saved in other folders
        QVERIFY(waitUntil([&] {
            watch.poll(0);
            return labelText(panel, "deviceState") == QStringLiteral("Connected and answering, not plotted");
        }));
        {
            DeviceDialog dialog(&rack, 0);
            ModuleSettings changed = dialog.settings();
            QCOMPARE(std::get<DeviceSettings>(changed.family).connection.port, server.port());
            std::get<DeviceSettings>(changed.family).connection.port = closedPort();
            QCOMPARE(rack.replace(0, changed), QString());
        }
        QVERIFY(waitUntil([&] {
            watch.poll(0);
            return labelText(panel, "trouble").contains(QStringLiteral("refuses the connection"));
        }));
        QPushButton *remove = nullptr;
        const auto buttons = panel.findChildren<QPushButton *>();
        for (QPushButton *const button : buttons) {
            remove = button->text() == QStringLiteral("Remove") ? button : remove;
        }
        QVERIFY(remove != nullptr);
        remove->click();
        QCOMPARE(rack.count(), 0);
    }

private:
    QString serverMapFile() const
    {
        QString path = temporaryPath(QStringLiteral("map.json"));
        write(path, serverMap);
        return path;
    }

    static void write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        REQUIRE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
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

GUARDED_TEST_MAIN(DevicesTest)
#include "DevicesTest.moc"
