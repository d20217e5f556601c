#include "FaultyLine.h"
#include "GuardedTest.h"
#include "ModbusProbe.h"
#include "modules/modbus/ModbusConnection.h"

#include <functional>
#include <memory>
#include <vector>

namespace
{

constexpr int tickMs = 7;

/// A device of two pairs of registers, too far apart for one request, behind a line with one fault.
struct ProbedDevice : FaultyDevice
{
    ProbedDevice(bool isSerialLine, FaultyLine::Fault lineFault)
        : FaultyDevice(isSerialLine)
        , isSerial(isSerialLine)
        , fault(lineFault)
        // Both requests have the same length, so that their answers could be mixed up.
        , probe(settings, pairsAt({10, 400}), {pairsAt({20, 800, 1200}), {}}) // there is no 1200
    {
    }

    bool ask()
    {
        isAnswered = probe.ask();
        return isAnswered;
    }

    /// Asks, and notes whether a device that has fallen silent seems to answer.
    void askWithFault()
    {
        ask();
        wasSilent = wasSilent || probe.channel.isSilenced();
        answeredSilent = answeredSilent || (wasSilent && isAnswered);
    }

    /// Whether the device still counts as answering. Copies of answers are recognised by their transaction numbers,
    /// which a serial line does not have.
    bool isHarmless() const
    {
        const bool isCopy = fault == FaultyLine::Twice || fault == FaultyLine::Merged;
        return fault <= FaultyLine::Split || (isCopy && !isSerial);
    }

    const bool isSerial;
    const FaultyLine::Fault fault;
    ModbusProbe probe;
    bool isAnswered = false; // just now
    bool wasSilent = false;
    bool answeredSilent = false;
};

} // namespace

/// Channels to devices over lines on which everything goes wrong.
class ModbusFaultsTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void faultsGiveNoWrongValue_data()
    {
        testRows<bool>({"isSerial"}, {{"tcp", false}, {"serial", true}});
    }

    /// All faults at the same time, each on a line of its own.
    void faultsGiveNoWrongValue()
    {
        QFETCH(bool, isSerial);
        const MachineJitter jitter;
        std::vector<std::unique_ptr<ProbedDevice>> devices;
        devices.reserve(FaultyLine::FaultCount);
        for (int fault = 0; fault < FaultyLine::FaultCount; ++fault) {
            devices.push_back(std::make_unique<ProbedDevice>(isSerial, static_cast<FaultyLine::Fault>(fault)));
        }
        const auto areAllAnswered = [&devices] {
            return std::count_if(devices.begin(), devices.end(), [](const auto &device) { return !device->ask(); }) ==
                   0;
        };
        const auto askAllWithFault = [&devices] {
            const auto isThrough = [](const auto &device) {
                device->askWithFault();
                return device->wasSilent || device->isHarmless();
            };
            return std::count_if(devices.begin(), devices.end(), isThrough) == int{FaultyLine::FaultCount};
        };
        QVERIFY(waitUntil(areAllAnswered));
        for (const auto &device : devices) {
            device->line->fault = device->fault;
        }
        // Until then they may give out what was there before.
        QVERIFY(waitUntil(askAllWithFault));
        for (int tick = 0; tick < 40; ++tick) {
            askAllWithFault();
            QTest::qSleep(tickMs);
        }
        for (const auto &device : devices) {
            device->line->fault = FaultyLine::None;
        }
        QElapsedTimer timer;
        timer.start();
        QVERIFY(waitUntil(areAllAnswered));
        QVERIFY2(timer.elapsed() < 2000 + jitter.longestMs(), qPrintable(QString::number(timer.elapsed())));
        for (int tick = 0; tick < 20; ++tick) {
            areAllAnswered();
            QTest::qSleep(tickMs);
        }
        for (const auto &device : devices) {
            const QString name = QString("fault %1: ").arg(device->fault);
            QCOMPARE(name + device->probe.mistake(), name);
            QVERIFY2(!device->answeredSilent && device->wasSilent == !device->isHarmless(), qPrintable(name));
            const auto longestMs = static_cast<int>(device->probe.statistics().longestDurationNs / modbusNsPerMs);
            QVERIFY2(longestMs <= 60 + jitter.longestMs(), qPrintable(name + QString::number(longestMs)));
        }
    }

    void unaskedAnswerIsDropped()
    {
        ProbedDevice overTcp(false, FaultyLine::None);
        ProbedDevice overSerial(true, FaultyLine::None);
        QVERIFY(waitUntil([&] { return overTcp.probe.ask() && overSerial.probe.ask(); }));
        QTest::qSleep(ModbusConnection::expiryMs + 200); // until nothing is asked any more
        // The right answer comes long after the wrong one.
        overSerial.server->answerTimeMs = 20;
        for (ProbedDevice *const device : {&overTcp, &overSerial}) {
            device->line->repeatsNow = true;
            QVERIFY(waitUntil([&] { return !device->line->repeatsNow; }));
            QVERIFY(waitUntil([&] { return device->probe.ask(); }));
            QCOMPARE(device->probe.mistake(), QString());
        }
    }

    void troubleIsNamed_data()
    {
        testRows<int, QString, QString>({"fault", "serial", "tcp"},
                                        {{"silent", FaultyLine::AnswerLost, "cable and rate", "No answer. Is the unit"},
                                         {"unit", FaultyLine::WrongUnit, "Another unit answered", "Unit 2 answered"},
                                         {"noise", FaultyLine::Corrupted, "Garbage", "no Modbus"},
                                         {"length", FaultyLine::TooLong, "length", "length"},
                                         {"transaction", FaultyLine::WrongTransaction, "", "other requests"}});
    }

    void troubleIsNamed()
    {
        QFETCH(int, fault);
        QFETCH(QString, serial);
        QFETCH(QString, tcp);
        for (const bool isSerial : {false, true}) {
            const QString expected = isSerial ? serial : tcp;
            const FaultyDevice device(isSerial);
            device.line->fault = static_cast<FaultyLine::Fault>(fault);
            ModbusProbe probe(device.settings, {pairAt(10)});
            const auto words = [&] { return probe.channel.state().trouble; };
            QVERIFY2(waitUntil([&] { return !probe.ask() && words().contains(expected); }, 5000), qPrintable(words()));
        }
    }

    void tenDevicesOfWhichFiveAreSilent()
    {
        constexpr int deviceCount = 10;
        std::vector<std::unique_ptr<ModbusServer>> servers;
        std::vector<std::unique_ptr<ModbusProbe>> probes;
        for (int index = 0; index < deviceCount; ++index) {
            servers.push_back(std::make_unique<ModbusServer>());
            servers.back()->isSilent = index % 2 == 1;
            probes.push_back(std::make_unique<ModbusProbe>(ModbusProbe::tcp(servers.back()->port()),
                                                           Spans{pairAt(10), pairAt(400)}));
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
        QVERIFY2(firstNs / modbusNsPerMs <= 60 + jitter.longestMs(),
                 qPrintable(QString::number(firstNs / modbusNsPerMs)));
        QVERIFY2(longestNs / modbusNsPerMs <= 20 + jitter.longestMs(),
                 qPrintable(QString::number(longestNs / modbusNsPerMs)));
    }
};

GUARDED_TEST(ModbusFaultsTest)
#include "ModbusFaultsTest.moc"
