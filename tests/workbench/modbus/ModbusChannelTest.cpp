#include "GuardedTest.h"
#include "ModbusProbe.h"
#include "modules/modbus/WaitBudget.h"

#include <functional>
#include <memory>
#include <vector>

namespace
{

using Status = Command::Status;

/// A pair at the address that is the type of the request.
std::optional<ModbusValue> pairAtType(const Command &request)
{
    return ModbusProbe::pairAt(pairAt(request.type()));
}

} // namespace

/// Channels to devices that do what they should, or nothing.
class ModbusChannelTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void joinsWhatLiesTogether()
    {
        ModbusServer server;
        // Two curves of one device, read by two exchanges.
        ModbusChannel channel(ModbusProbe::tcp(server.port()), pairAtType);
        Exchange first({requestFor(0, 0, 0, 10), requestFor(0, 0, 0, 30)});
        Exchange second({requestFor(0, 0, 0, 40), requestFor(0, 0, 0, 60)});
        const auto ask = [&] {
            first.with(&channel);
            return second.with(&channel);
        };
        QVERIFY(waitUntil(ask));
        server.takeRequests();
        Spans requests;
        QVERIFY(waitUntil([&] {
            ask();
            requests += server.takeRequests();
            return requests.size() > 3;
        }));
        const RegisterSpan joined{ModbusTable::HoldingRegister, 10, 52};
        QCOMPARE(requests.count(joined), requests.size());
    }

    void readsAroundWhatTheDeviceRefuses_data()
    {
        testRows<int, int>({"hole", "maximumSpan"},
                           {{"nothing is in a gap", 13, 125}, {"objects are read one at a time", -1, 2}});
    }

    void readsAroundWhatTheDeviceRefuses()
    {
        QFETCH(int, hole);
        QFETCH(int, maximumSpan);
        ModbusServer server;
        server.hole = hole;
        server.maximumSpan = maximumSpan;
        ModbusProbe probe(ModbusProbe::tcp(server.port()), {pairAt(10), pairAt(16)});
        bool wasRefused = false; // each of the two alone is there
        QVERIFY(waitUntil([&] {
            const bool isAnswered = probe.ask();
            wasRefused = wasRefused || probe.reply(0).status() == Status::Refused;
            return isAnswered;
        }));
        QVERIFY(!wasRefused);
        // What was refused once is not tried again.
        server.takeRequests();
        const quint64 rounds = probe.statistics().answeredExchanges + 5;
        QVERIFY(waitUntil([&] { return probe.ask() && probe.statistics().answeredExchanges > rounds; }));
        const auto requests = server.takeRequests();
        for (const RegisterSpan &request : requests) {
            QCOMPARE(int{request.count}, 2);
        }
        QCOMPARE(probe.mistake(), QString());
    }

    void refusedAndUnknownValuesKeepTheirReplies()
    {
        ModbusServer server;
        server.hole = 16;
        ModbusChannel channel(ModbusProbe::tcp(server.port()), [](const Command &request) {
            return request.type() == 99 ? std::nullopt : pairAtType(request); // which is no value of the device
        });
        Exchange exchange({requestFor(0, 0, 2, 10), requestFor(0, 0, 2, 16), requestFor(0, 0, 2, 99)});
        for (CommandCombo &combo : exchange.combos) {
            combo.reply.setValue(7);
        }
        exchange.list.append(nullptr);
        QVERIFY(waitUntil([&] {
            exchange.with(&channel);
            return exchange.reply(0).value() != 7;
        }));
        for (const int index : {1, 2}) {
            QCOMPARE(exchange.reply(index).status(), Status::Refused);
            QCOMPARE(exchange.reply(index).value(), 7);
        }
        for (const CommandCombo &combo : exchange.combos) {
            QCOMPARE(combo.reply.type(), combo.request.type());
            QCOMPARE(int{combo.reply.motorBank()}, 2);
        }
        QVERIFY(!channel.isSilenced());
        QVERIFY(channel.state().trouble.contains("illegal data address"));
        QCOMPARE(channel.statistics().answeredExchanges, 0ULL); // one of the values is an old one
    }

    void answersComeFromRoundsOfTheThread()
    {
        ModbusServer server;
        server.answerTimeMs = 40;
        ModbusProbe probe(ModbusProbe::tcp(server.port()), {pairAt(10), pairAt(400)}); // two requests, 80 ms a round
        QVERIFY(waitUntil([&] { return probe.ask(); }));
        QElapsedTimer timer;
        timer.start();
        const quint64 answered = probe.statistics().answeredExchanges;
        QVERIFY(waitUntil([&] { return probe.ask() && timer.elapsed() > 2500; }));
        // Most exchanges use an answer that was there already, so there are more exchanges than rounds.
        QVERIFY(probe.statistics().answeredExchanges - answered > 60);
        const ModbusChannel::State state = probe.channel.state();
        QVERIFY(state.isConnected);
        QCOMPARE(state.trouble, QString());
        QVERIFY2(state.answersPerSecond > 1 && state.answersPerSecond <= 12.6,
                 qPrintable(QString::number(state.answersPerSecond)));
        QVERIFY(state.ageMs >= 0);
        QCOMPARE(probe.mistake(), QString());

        // What nobody asks for is not asked.
        QTest::qSleep(1300);
        server.takeRequests();
        QTest::qSleep(200);
        QCOMPARE(server.takeRequests().size(), 0);
    }

    void silentDeviceCostsNothing()
    {
        ModbusServer server;
        const MachineJitter jitter;
        ModbusProbe probe(ModbusProbe::tcp(server.port()), {pairAt(10)});
        QVERIFY(waitUntil([&] { return probe.ask(); }));
        const qint32 lastValue = probe.reply(0).value();
        server.isSilent = true;
        QVERIFY(waitUntil([&] { return !probe.ask(); }));
        QVERIFY(probe.channel.isSilenced());
        QCOMPARE(probe.reply(0).status(), Status::Unanswered);
        QVERIFY((static_cast<quint32>(probe.reply(0).value()) >> 16) == static_cast<quint32>(lastValue) >> 16);
        QVERIFY(!probe.channel.state().trouble.isEmpty());

        const qint64 before = probe.statistics().totalDurationNs;
        constexpr int asked = 150;
        for (int count = 0; count < asked; ++count) {
            QVERIFY(!probe.ask());
            QTest::qSleep(7);
        }
        // Less than a tenth of a millisecond each: no exchange has waited.
        QVERIFY(probe.statistics().totalDurationNs - before < (asked / 10 + jitter.longestMs()) * modbusNsPerMs);
        server.isSilent = false;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(waitUntil([&] { return probe.ask(); }));
        QVERIFY2(timer.elapsed() < 2000 + jitter.longestMs(), qPrintable(QString::number(timer.elapsed())));
        QVERIFY(!probe.channel.isSilenced());
        QCOMPARE(probe.mistake(), QString());
    }

    void unitsShareOneConnection()
    {
        const FaultyDevice device(true); // unit 1; nobody is unit 2
        ConnectionSettings settings = device.settings;
        ModbusProbe present(settings, {pairAt(10)});
        settings.unit = 2;
        ModbusProbe absent(settings, {pairAt(10)});
        QVERIFY(waitUntil([&] {
            present.ask();
            return !absent.ask() && absent.channel.isSilenced();
        }));
        QVERIFY(waitUntil([&] { return present.ask(); }));
        QCOMPARE(present.mistake(), QString());

        // The port is in use: nobody else gets it, with other settings.
        settings.baud = 9600;
        const ModbusProbe other(settings, {pairAt(10)});
        QVERIFY(waitUntil([&] { return other.channel.state().trouble.contains("in use"); }));
    }

    void serialPortComesBack()
    {
        const QString link = temporaryPath("port");
        auto device = std::make_unique<FaultyDevice>(true);
        QVERIFY(QFile::link(device->settings.serialPort, link));
        ModbusProbe probe(ModbusProbe::serial(link, FaultyDevice::baud), {pairAt(10)});
        QVERIFY(waitUntil([&] { return probe.ask(); }));
        device.reset();
        QVERIFY(QFile::remove(link));
        QVERIFY(waitUntil([&] { return !probe.ask() && !probe.channel.state().isConnected; }));
        QVERIFY(waitUntil([&] { return probe.channel.state().trouble.contains("no such serial port"); }));

        device = std::make_unique<FaultyDevice>(true);
        QVERIFY(QFile::link(device->settings.serialPort, link));
        QVERIFY(waitUntil([&] { return probe.ask(); }));
    }

    void endsWithoutWaiting()
    {
        ModbusServer server;
        server.isSilent = true;
        const MachineJitter jitter;
        ConnectionSettings nowhere = ModbusProbe::tcp(502);
        nowhere.host = "192.0.2.1"; // nobody has this address
        ConnectionSettings unknown = nowhere;
        unknown.host = "no-such-host.invalid";
        QElapsedTimer timer;
        timer.start();
        for (const ConnectionSettings &settings : {ModbusProbe::tcp(server.port()), nowhere, unknown}) {
            ModbusProbe probe(settings, {pairAt(10)});
            QVERIFY(!probe.ask());
            QCOMPARE(probe.reply(0).status(), Status::Unanswered);
        }
        // One first wait of 50 ms for all; ending does not wait for the threads.
        QVERIFY2(timer.elapsed() < 80 + 3 * jitter.longestMs(), qPrintable(QString::number(timer.elapsed())));
    }

    void waitsOfAllChannelsAreLimited()
    {
        WaitBudget budget(8, 25);
        qint64 nowNs = modbusNsPerMs * qint64{1000};
        const auto grantedMs = [&](int wishMs) {
            return budget.grantedNs(wishMs * modbusNsPerMs, nowNs) / modbusNsPerMs;
        };
        QCOMPARE(grantedMs(5), 5);
        budget.spend(5 * modbusNsPerMs);
        QCOMPARE(grantedMs(5), 3);
        budget.spend(4 * modbusNsPerMs); // a little too long
        QCOMPARE(grantedMs(5), 0);
        nowNs += 12 * modbusNsPerMs;
        QCOMPARE(grantedMs(5), 2);
        nowNs += 1000 * modbusNsPerMs;
        QCOMPARE(grantedMs(50), 8);
    }
};

GUARDED_TEST(ModbusChannelTest)
#include "ModbusChannelTest.moc"
