#include "FaultyLine.h"
#include "GuardedTest.h"
#include "ModbusProbe.h"
#include "modules/modbus/WaitBudget.h"

#include <QElapsedTimer>

#include <functional>
#include <memory>
#include <vector>

namespace
{

using Status = Command::Status;
using Spans = QVector<RegisterSpan>;

constexpr int tickMs = 7;
constexpr int nsPerMs = 1000000;
constexpr int fastBaud = 115200;

RegisterSpan pairAt(int address, ModbusTable table = ModbusTable::HoldingRegister)
{
    return {table, static_cast<quint16>(address), 2};
}

} // namespace

/// Channels to devices that do what they should, or nothing.
class ModbusChannelTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void readsEveryTable();
    void joinsWhatLiesTogether();
    void readsAroundWhatTheDeviceRefuses_data();
    void readsAroundWhatTheDeviceRefuses();
    void refusedAndUnknownValuesKeepTheirReplies();
    void answersComeFromRoundsOfTheThread();
    void silentDeviceCostsNothing();
    void unitsShareOneConnection();
    void serialPortComesBack();
    void endsWithoutWaiting();
    void waitsOfAllChannelsAreLimited();
};

void ModbusChannelTest::readsEveryTable()
{
    const ModbusServer server;
    const Spans spans{pairAt(4),
                      pairAt(4, ModbusTable::InputRegister),
                      {ModbusTable::Coil, 3, 2},
                      {ModbusTable::DiscreteInput, 4, 2}};
    ModbusChannel channel(ModbusProbe::tcp(server.port()),
                          [&](const Command &request) { return ModbusProbe::pairAt(spans.at(request.type())); });
    QVector<CommandCombo> combos(spans.size());
    QList<CommandCombo *> list;
    for (int index = 0; index < combos.size(); ++index) {
        combos[index].request.setType(static_cast<unsigned short>(index));
        list.append(&combos[index]);
    }
    QVERIFY(waitUntil([&] {
        channel.sendCommandCombos(list);
        return combos.at(0).reply.status() == Status::Answered;
    }));
    QCOMPARE(static_cast<quint32>(combos.at(0).reply.value()) >> 16,
             quint32{ModbusServer::marker(ModbusTable::HoldingRegister, 4)});
    QCOMPARE(static_cast<quint32>(combos.at(1).reply.value()) >> 16,
             quint32{ModbusServer::marker(ModbusTable::InputRegister, 4)});
    QCOMPARE(combos.at(2).reply.value(), 0x10000); // 3 is on, 4 is off
    QCOMPARE(combos.at(3).reply.value(), 1);       // 4 is off, 5 is on
}

void ModbusChannelTest::joinsWhatLiesTogether()
{
    ModbusServer server;
    // Two curves of one device, read by two exchanges.
    ModbusChannel channel(ModbusProbe::tcp(server.port()),
                          [](const Command &request) { return ModbusProbe::pairAt(pairAt(request.type())); });
    CommandCombo first[2];
    CommandCombo second[2];
    for (int index = 0; index < 2; ++index) {
        first[index].request.setType(static_cast<unsigned short>(10 + 20 * index));
        second[index].request.setType(static_cast<unsigned short>(40 + 20 * index));
    }
    const auto ask = [&] {
        channel.sendCommandCombos({&first[0], &first[1]});
        channel.sendCommandCombos({&second[0], &second[1]});
    };
    QVERIFY(waitUntil([&] {
        ask();
        return second[0].reply.status() == Status::Answered;
    }));
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

void ModbusChannelTest::readsAroundWhatTheDeviceRefuses_data()
{
    QTest::addColumn<int>("hole");
    QTest::addColumn<int>("maximumSpan");

    QTest::newRow("nothing is in a gap") << 13 << 125;
    QTest::newRow("objects are read one at a time") << -1 << 2;
}

void ModbusChannelTest::readsAroundWhatTheDeviceRefuses()
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

void ModbusChannelTest::refusedAndUnknownValuesKeepTheirReplies()
{
    ModbusServer server;
    server.hole = 16;
    // The third is no value of the device.
    ModbusChannel channel(ModbusProbe::tcp(server.port()), [](const Command &request) {
        return request.type() == 99 ? std::nullopt : ModbusProbe::pairAt(pairAt(request.type()));
    });
    CommandCombo combos[3];
    combos[0].request.setType(10);
    combos[1].request.setType(16);
    combos[2].request.setType(99);
    for (CommandCombo &combo : combos) {
        combo.reply.setValue(7);
        combo.request.setMotorBank(2);
    }
    QVERIFY(waitUntil([&] {
        channel.sendCommandCombos({&combos[0], nullptr, &combos[1], &combos[2]});
        return combos[0].reply.value() != 7;
    }));
    QCOMPARE(combos[1].reply.status(), Status::Refused);
    QCOMPARE(combos[1].reply.value(), 7);
    QCOMPARE(combos[2].reply.status(), Status::Refused);
    QCOMPARE(combos[2].reply.value(), 7);
    for (const CommandCombo &combo : combos) {
        QCOMPARE(combo.reply.type(), combo.request.type());
        QCOMPARE(int{combo.reply.motorBank()}, 2);
    }
    QVERIFY(!channel.isSilenced());
    QVERIFY(channel.state().trouble.contains(QLatin1String("illegal data address")));
    QCOMPARE(channel.statistics().answeredExchanges, 0ULL); // one of the values is an old one
}

void ModbusChannelTest::answersComeFromRoundsOfTheThread()
{
    ModbusServer server;
    server.answerTimeMs = 40;
    ModbusProbe probe(ModbusProbe::tcp(server.port()), {pairAt(10), pairAt(400)}); // two requests, 80 ms a round
    QVERIFY(waitUntil([&] { return probe.ask(); }));
    QElapsedTimer timer;
    timer.start();
    const quint64 answered = probe.statistics().answeredExchanges;
    QVERIFY(waitUntil([&] { return probe.ask() && timer.elapsed() > 2500; }));
    // Most exchanges give out an answer that was there, so there are more than rounds.
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

void ModbusChannelTest::silentDeviceCostsNothing()
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
        QTest::qSleep(tickMs);
    }
    // Less than a tenth of a millisecond each: no exchange has waited.
    QVERIFY(probe.statistics().totalDurationNs - before < (asked / 10 + jitter.longestMs()) * qint64{nsPerMs});
    server.isSilent = false;
    QElapsedTimer timer;
    timer.start();
    QVERIFY(waitUntil([&] { return probe.ask(); }));
    QVERIFY2(timer.elapsed() < 2000 + jitter.longestMs(), qPrintable(QString::number(timer.elapsed())));
    QVERIFY(!probe.channel.isSilenced());
    QCOMPARE(probe.mistake(), QString());
}

void ModbusChannelTest::unitsShareOneConnection()
{
    FaultyLine line;
    ModbusServer server(line.serverPort(), fastBaud); // unit 1; nobody is unit 2
    ConnectionSettings settings = ModbusProbe::serial(line.clientPort(), fastBaud);
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
    QVERIFY(waitUntil([&] { return other.channel.state().trouble.contains(QLatin1String("in use")); }));
}

void ModbusChannelTest::serialPortComesBack()
{
    const QString link = temporaryPath(QStringLiteral("port"));
    auto line = std::make_unique<FaultyLine>();
    QVERIFY(QFile::link(line->clientPort(), link));
    auto server = std::make_unique<ModbusServer>(line->serverPort(), fastBaud);
    ModbusProbe probe(ModbusProbe::serial(link, fastBaud), {pairAt(10)});
    QVERIFY(waitUntil([&] { return probe.ask(); }));
    server.reset();
    line.reset();
    QVERIFY(QFile::remove(link));
    QVERIFY(waitUntil([&] { return !probe.ask() && !probe.channel.state().isConnected; }));
    QVERIFY(waitUntil([&] { return probe.channel.state().trouble.contains(QLatin1String("no such serial port")); }));

    line = std::make_unique<FaultyLine>();
    QVERIFY(QFile::link(line->clientPort(), link));
    server = std::make_unique<ModbusServer>(line->serverPort(), fastBaud);
    QVERIFY(waitUntil([&] { return probe.ask(); }));
}

void ModbusChannelTest::endsWithoutWaiting()
{
    ModbusServer server;
    server.isSilent = true;
    const MachineJitter jitter;
    ConnectionSettings nowhere = ModbusProbe::tcp(502);
    nowhere.host = QStringLiteral("192.0.2.1"); // nobody has this address
    ConnectionSettings unknown = nowhere;
    unknown.host = QStringLiteral("no-such-host.invalid");
    QElapsedTimer timer;
    timer.start();
    for (const ConnectionSettings &settings : {ModbusProbe::tcp(server.port()), nowhere, unknown}) {
        ModbusChannel channel(settings, [](const Command &) { return ModbusProbe::pairAt(pairAt(10)); });
        CommandCombo combo;
        channel.sendCommandCombos({&combo});
        QCOMPARE(combo.reply.status(), Status::Unanswered);
    }
    // One first wait of 50 ms for all; whatever the threads are in the middle of, nobody waits for them.
    QVERIFY2(timer.elapsed() < 80 + 3 * jitter.longestMs(), qPrintable(QString::number(timer.elapsed())));
}

void ModbusChannelTest::waitsOfAllChannelsAreLimited()
{
    WaitBudget budget(8, 25);
    qint64 nowNs = nsPerMs * qint64{1000};
    const auto grantedMs = [&](int wishMs) { return budget.grantedNs(wishMs * nsPerMs, nowNs) / nsPerMs; };
    QCOMPARE(grantedMs(5), 5);
    budget.spend(5 * nsPerMs);
    QCOMPARE(grantedMs(5), 3);
    budget.spend(4 * nsPerMs); // a little too long
    QCOMPARE(grantedMs(5), 0);
    nowNs += 12 * nsPerMs;
    QCOMPARE(grantedMs(5), 2);
    nowNs += 1000 * qint64{nsPerMs};
    QCOMPARE(grantedMs(50), 8);
}

GUARDED_TEST_MAIN(ModbusChannelTest)
#include "ModbusChannelTest.moc"
