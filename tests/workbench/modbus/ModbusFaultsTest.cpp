#include "FaultyLine.h"
#include "GuardedTest.h"
#include "ModbusProbe.h"
#include "modules/modbus/ModbusConnection.h"

#include <QElapsedTimer>

#include <functional>
#include <memory>
#include <vector>

namespace
{

using Spans = QVector<RegisterSpan>;

constexpr int tickMs = 7;
constexpr int nsPerMs = 1000000;
constexpr int fastBaud = 115200;

RegisterSpan pairAt(int address)
{
    return {ModbusTable::HoldingRegister, static_cast<quint16>(address), 2};
}

/// A device of two registers pairs, too far apart for one request, behind a line with one fault.
struct FaultyDevice
{
    FaultyDevice(bool isSerialLine, FaultyLine::Fault lineFault) : isSerial(isSerialLine), fault(lineFault)
    {
        if (isSerial) {
            line = std::make_unique<FaultyLine>();
            server = std::make_unique<ModbusServer>(line->serverPort(), fastBaud);
        } else {
            server = std::make_unique<ModbusServer>();
            line = std::make_unique<FaultyLine>(server->port());
        }
        line->lateMs = isSerial ? 450 : 650; // later than it is waited for
        // Both requests have the same length, so that an answer to one could be taken for that to the other.
        probe = std::make_unique<ModbusProbe>(
            isSerial ? ModbusProbe::serial(line->clientPort(), fastBaud) : ModbusProbe::tcp(line->port()),
            Spans{pairAt(10), pairAt(400)}, SurveyedSpans{{pairAt(20), pairAt(800), pairAt(1200)}, {}}); // no 1200
    }

    /// Whether the device goes on to answer. Copies of answers are recognised by their transaction numbers,
    /// which a serial line does not have.
    bool isHarmless() const
    {
        const bool isCopy = fault == FaultyLine::Twice || fault == FaultyLine::Merged;
        return fault <= FaultyLine::Split || (isCopy && !isSerial);
    }

    const bool isSerial;
    const FaultyLine::Fault fault;
    std::unique_ptr<FaultyLine> line;
    std::unique_ptr<ModbusServer> server;
    std::unique_ptr<ModbusProbe> probe;
    bool isAnswered = false; // just now
    bool wasSilent = false;
    int answeredSilent = 0;
};

} // namespace

/// Channels to devices over lines on which everything goes wrong.
class ModbusFaultsTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void faultsGiveNoWrongValue_data();
    void faultsGiveNoWrongValue();
    void unaskedAnswerIsDropped();
    void troubleIsNamed_data();
    void troubleIsNamed();
    void tenDevicesOfWhichFiveAreSilent();
};

void ModbusFaultsTest::faultsGiveNoWrongValue_data()
{
    QTest::addColumn<bool>("isSerial");

    QTest::newRow("tcp") << false;
    QTest::newRow("serial") << true;
}

/// All faults at the same time, each on a line of its own.
void ModbusFaultsTest::faultsGiveNoWrongValue()
{
    QFETCH(bool, isSerial);

    const MachineJitter jitter;
    std::vector<std::unique_ptr<FaultyDevice>> devices;
    devices.reserve(FaultyLine::FaultCount);
    for (int fault = 0; fault < FaultyLine::FaultCount; ++fault) {
        devices.push_back(std::make_unique<FaultyDevice>(isSerial, static_cast<FaultyLine::Fault>(fault)));
    }
    const auto askAll = [&devices](const std::function<bool(FaultyDevice &)> &check) {
        bool isAll = true;
        for (const auto &device : devices) {
            device->isAnswered = device->probe->ask();
            isAll = check(*device) && isAll;
        }
        return isAll;
    };
    QVERIFY(waitUntil([&] { return askAll([](FaultyDevice &device) { return device.isAnswered; }); }));
    for (const auto &device : devices) {
        device->line->fault = device->fault;
    }
    // Until then they may give out what was there before.
    QVERIFY(waitUntil([&] {
        return askAll([](FaultyDevice &device) {
            device.wasSilent = device.wasSilent || device.probe->channel.isSilenced();
            device.answeredSilent += device.wasSilent && device.isAnswered ? 1 : 0;
            return device.wasSilent || device.isHarmless();
        });
    }));
    for (int tick = 0; tick < 40; ++tick) {
        askAll([](FaultyDevice &device) {
            device.wasSilent = device.wasSilent || device.probe->channel.isSilenced();
            device.answeredSilent += device.wasSilent && device.isAnswered ? 1 : 0;
            return true;
        });
        QTest::qSleep(tickMs);
    }
    for (const auto &device : devices) {
        device->line->fault = FaultyLine::None;
    }
    QElapsedTimer timer;
    timer.start();
    QVERIFY(waitUntil([&] { return askAll([](FaultyDevice &device) { return device.isAnswered; }); }));
    QVERIFY2(timer.elapsed() < 2000 + jitter.longestMs(), qPrintable(QString::number(timer.elapsed())));
    for (int tick = 0; tick < 20; ++tick) {
        askAll([](FaultyDevice &) { return true; });
        QTest::qSleep(tickMs);
    }
    for (const auto &device : devices) {
        const QString name = QStringLiteral("fault %1: ").arg(device->fault);
        QCOMPARE(name + device->probe->mistake(), name);
        QVERIFY2(device->answeredSilent == 0 && device->wasSilent == !device->isHarmless(), qPrintable(name));
        const auto longestMs = static_cast<int>(device->probe->statistics().longestDurationNs / nsPerMs);
        QVERIFY2(longestMs <= 60 + jitter.longestMs(), qPrintable(name + QString::number(longestMs)));
    }
}

void ModbusFaultsTest::unaskedAnswerIsDropped()
{
    FaultyDevice overTcp(false, FaultyLine::None);
    FaultyDevice overSerial(true, FaultyLine::None);
    QVERIFY(waitUntil([&] { return overTcp.probe->ask() && overSerial.probe->ask(); }));
    QTest::qSleep(ModbusConnection::expiryMs + 200); // until nothing is asked any more
    // The right answer comes long after the wrong one could have been taken.
    overSerial.server->answerTimeMs = 20;
    for (const FaultyDevice *const device : {&overTcp, &overSerial}) {
        device->line->repeatsNow = true;
        QVERIFY(waitUntil([&] { return !device->line->repeatsNow; }));
        QVERIFY(waitUntil([&] { return device->probe->ask(); }));
        QCOMPARE(device->probe->mistake(), QString());
    }
}

void ModbusFaultsTest::troubleIsNamed_data()
{
    QTest::addColumn<int>("fault");
    QTest::addColumn<QString>("serial");
    QTest::addColumn<QString>("tcp");

    QTest::newRow("silent") << int{FaultyLine::AnswerLost} << "cable and rate"
                            << "No answer. Is the unit";
    QTest::newRow("unit") << int{FaultyLine::WrongUnit} << "Another unit answered"
                          << "Unit 2 answered";
    QTest::newRow("noise") << int{FaultyLine::Corrupted} << "Garbage"
                           << "no Modbus";
    QTest::newRow("length") << int{FaultyLine::TooLong} << "length"
                            << "length";
    QTest::newRow("transaction") << int{FaultyLine::WrongTransaction} << ""
                                 << "other requests";
}

void ModbusFaultsTest::troubleIsNamed()
{
    QFETCH(int, fault);
    QFETCH(QString, serial);
    QFETCH(QString, tcp);

    const ModbusServer tcpServer;
    FaultyLine tcpLine(tcpServer.port());
    FaultyLine serialLine;
    const ModbusServer serialServer(serialLine.serverPort(), fastBaud);
    tcpLine.fault = static_cast<FaultyLine::Fault>(fault);
    serialLine.fault = static_cast<FaultyLine::Fault>(fault);
    ModbusProbe overTcp(ModbusProbe::tcp(tcpLine.port()), {pairAt(10)});
    ModbusProbe overSerial(ModbusProbe::serial(serialLine.clientPort(), fastBaud), {pairAt(10)});
    const auto words = [](const ModbusProbe &probe) { return probe.channel.state().trouble; };
    QVERIFY2(waitUntil([&] { return !overTcp.ask() && words(overTcp).contains(tcp); }, 5000),
             qPrintable(words(overTcp)));
    QVERIFY2(waitUntil([&] { return !overSerial.ask() && words(overSerial).contains(serial); }, 5000),
             qPrintable(words(overSerial)));
}

void ModbusFaultsTest::tenDevicesOfWhichFiveAreSilent()
{
    constexpr int deviceCount = 10;
    std::vector<std::unique_ptr<ModbusServer>> servers;
    std::vector<std::unique_ptr<ModbusProbe>> probes;
    for (int index = 0; index < deviceCount; ++index) {
        servers.push_back(std::make_unique<ModbusServer>());
        servers.back()->isSilent = index % 2 == 1;
        probes.push_back(
            std::make_unique<ModbusProbe>(ModbusProbe::tcp(servers.back()->port()), Spans{pairAt(10), pairAt(400)}));
    }
    const MachineJitter jitter;
    QVector<int> answers(deviceCount);
    qint64 longestNs = 0;
    qint64 firstNs = 0;
    for (int tick = 0; tick < 150; ++tick) {
        QElapsedTimer timer;
        timer.start();
        for (int index = 0; index < deviceCount; ++index) {
            answers[index] += probes[static_cast<size_t>(index)]->ask() ? 1 : 0;
        }
        (tick == 0 ? firstNs : longestNs) = std::max(longestNs, timer.nsecsElapsed());
        QTest::qSleep(tickMs);
    }
    for (int index = 0; index < deviceCount; ++index) {
        QCOMPARE(probes[static_cast<size_t>(index)]->mistake(), QString());
        QCOMPARE(answers.at(index) > 100, index % 2 == 0);
    }
    QVERIFY2(firstNs / nsPerMs <= 60 + jitter.longestMs(), qPrintable(QString::number(firstNs / nsPerMs)));
    QVERIFY2(longestNs / nsPerMs <= 20 + jitter.longestMs(), qPrintable(QString::number(longestNs / nsPerMs)));
}

GUARDED_TEST_MAIN(ModbusFaultsTest)
#include "ModbusFaultsTest.moc"
