#include "GuardedTest.h"
#include "ModbusProbe.h"
#include "modules/modbus/ModbusConnection.h"
#include "modules/modbus/UnitSurvey.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace
{

using Status = Command::Status;

constexpr int slowBaud = 9600;

bool isOf(const Command &reply, int address)
{
    return static_cast<quint32>(reply.value()) >> 16 == ModbusServer::marker(ModbusTable::HoldingRegister, address);
}

/// How many of \a requests hold the register \a address.
int countOf(const Spans &requests, int address)
{
    return static_cast<int>(std::count_if(requests.cbegin(), requests.cend(), [address](const RegisterSpan &request) {
        return request.address <= address && address < request.end();
    }));
}

/// Whether each of \a addresses was read since the last call, alone or with others.
bool areRead(ModbusServer &server, const QVector<int> &addresses)
{
    Spans requests;
    return waitUntil([&] {
        requests += server.takeRequests();
        return std::all_of(addresses.cbegin(), addresses.cend(),
                           [&requests](int address) { return countOf(requests, address) > 0; });
    });
}

} // namespace

/// Values that are read before anybody asks for them.
class ModbusSurveyTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void chosenValuesAreThereAtOnce()
    {
        // Four curves whose values are so far apart that a round takes 200 ms.
        const QVector<int> addresses{10, 140, 270, 400, 530, 660, 790, 920};
        FaultyLine line;
        line.baud = slowBaud;
        ModbusServer server(line.serverPort(), slowBaud);
        const ConnectionSettings settings = ModbusProbe::serial(line.clientPort(), slowBaud);
        std::vector<std::unique_ptr<ModbusProbe>> curves;
        for (int curve = 0; curve < 4; ++curve) {
            const Spans spans{pairAt(addresses.at(curve)), pairAt(addresses.at(curve + 4))};
            curves.push_back(std::make_unique<ModbusProbe>(settings, spans, SurveyedSpans{pairsAt(addresses), {}}));
        }
        QVERIFY(areRead(server, addresses));
        QVERIFY(areRead(server, addresses)); // those of the first pass have arrived
        for (int tick = 0; tick < 40; ++tick) {
            for (int curve = 0; curve < 4; ++curve) {
                ModbusProbe &probe = *curves[static_cast<size_t>(curve)];
                const bool isAnswered = probe.ask();
                const qint32 values[] = {probe.reply(0).value(), probe.reply(1).value()};
                QVERIFY2(isOf(probe.reply(0), addresses.at(curve)), qPrintable(QString::number(tick)));
                QVERIFY2(isOf(probe.reply(1), addresses.at(curve + 4)), qPrintable(QString::number(tick)));
                // Two requests of the survey are no round: until there is one, the values stay and count as old ones.
                if (!isAnswered) {
                    probe.ask();
                    QVERIFY(probe.reply(0).status() == Status::Answered ||
                            (probe.reply(0).value() == values[0] && probe.reply(1).value() == values[1]));
                }
                QCOMPARE(probe.mistake(), QString());
            }
            QTest::qSleep(14);
        }
        QVERIFY(waitUntil([&] { return curves.front()->ask() && curves.back()->ask(); }));
    }

    void answerOfOneRequestIsGivenUntilTheFirstRound()
    {
        ModbusServer server;
        const Spans pair{pairAt(10), pairAt(12)};
        ModbusProbe probe(ModbusProbe::tcp(server.port()), pair, {pair, {}});
        QVERIFY(areRead(server, {10}));
        QVERIFY(areRead(server, {10}));
        server.answerTimeMs = 400; // much longer than an exchange waits
        QVERIFY(probe.ask());
        const qint32 surveyed = probe.reply(0).value();
        QVERIFY(probe.ask());
        QCOMPARE(probe.reply(0).value(), surveyed);
        QTest::qSleep(60);
        QVERIFY(probe.channel.state().ageMs >= 60); // as old as what is given out
        QVERIFY(waitUntil([&] { return probe.ask() && probe.reply(0).value() != surveyed; }));
        QCOMPARE(probe.mistake(), QString());
    }

    void silentDeviceShowsItsLastValues()
    {
        ModbusServer server;
        const SurveyedSpans survey{pairsAt({10, 400}), {}};
        ModbusProbe before(ModbusProbe::tcp(server.port()), {pairAt(10)}, survey);
        ModbusProbe chosenLater(ModbusProbe::tcp(server.port()), {pairAt(400)}, survey);
        QVERIFY(areRead(server, {10, 400}));
        QVERIFY(areRead(server, {10, 400}));
        server.isSilent = true;
        QVERIFY(waitUntil([&] { return !before.ask() && before.channel.isSilenced(); }));
        QVERIFY(!chosenLater.ask());
        QCOMPARE(chosenLater.reply(0).status(), Status::Unanswered);
        QVERIFY(isOf(chosenLater.reply(0), 400));
        QVERIFY(chosenLater.channel.isSilenced());
    }

    void oldValueIsNoAnswer()
    {
        ModbusServer server;
        ModbusProbe other(ModbusProbe::tcp(server.port()), {pairAt(10)});
        auto survey = std::make_unique<ModbusProbe>(ModbusProbe::tcp(server.port()), pairsAt({400}),
                                                    SurveyedSpans{pairsAt({400}), {}});
        QVERIFY(areRead(server, {400}));
        QVERIFY(areRead(server, {400}));
        survey.reset(); // nobody reads it ahead any more, and what was read is still known
        QElapsedTimer timer;
        timer.start();
        QVERIFY(waitUntil([&] { return other.ask() && timer.elapsed() > ModbusConnection::surveyLimitMs + 200; }));
        ModbusProbe late(ModbusProbe::tcp(server.port()), {pairAt(400)});
        server.answerTimeMs = 400; // much longer than an exchange waits
        QVERIFY(!late.ask());
    }

    void lineIsLeftToWhatIsAsked()
    {
        ModbusServer server;
        QVector<int> addresses;
        SurveyedSpans survey;
        for (int address = 10; address < 1000; address += 30) {
            addresses.append(address);
            survey.ahead += {pairAt(address), pairAt(address, ModbusTable::InputRegister)};
        }
        ModbusProbe probe(ModbusProbe::tcp(server.port()), {pairAt(2)}, survey);
        QVERIFY(areRead(server, addresses));
        QTest::qSleep(1000);
        server.takeRequests();
        QTest::qSleep(2000);
        const int idle = server.takeRequests().size(); // of 16 requests
        QVERIFY2(idle >= 5 && idle <= 22, qPrintable(QString::number(idle)));

        server.answerTimeMs = 40;
        QVERIFY(waitUntil([&] { return probe.ask(); }));
        server.takeRequests();
        QElapsedTimer timer;
        timer.start();
        QVERIFY(waitUntil([&] { return probe.ask() && timer.elapsed() > 2000; }));
        const Spans requests = server.takeRequests();
        const int rounds = requests.count(pairAt(2));
        const int ahead = requests.size() - rounds;
        QVERIFY2(ahead >= 2 && ahead * 8 < rounds, qPrintable(QString("%1 beside %2").arg(ahead).arg(rounds)));
    }

    void refusedAndUnansweredValuesAreFound()
    {
        // Of 200 values, one is missing, and one is never answered. The clock goes by requests.
        Spans spans;
        for (int address = 0; address < 400; address += 2) {
            spans.append(pairAt(address));
        }
        UnitSurvey survey({spans, {}}, LineCost{20}, {});
        QMap<int, int> answers;
        int refusals = 0;
        int misses = 0;
        bool wasSilent = false;
        for (qint64 nowMs = 1; nowMs < 50000; nowMs += 10) {
            qint64 dueNs = 0;
            const int index = survey.next({}, false, nowMs * modbusNsPerMs, &dueNs);
            if (index == UnitSurvey::none) {
                QVERIFY(dueNs > nowMs * modbusNsPerMs);
                continue;
            }
            const RegisterSpan request = survey.request(index);
            if (countOf({request}, 301) > 0) {
                ++misses;
                wasSilent = survey.noteMiss(index, false, nowMs * modbusNsPerMs) || wasSilent;
            } else if (countOf({request}, 100) > 0) {
                ++refusals;
                survey.noteRefusal(index, nowMs * modbusNsPerMs);
            } else {
                for (const RegisterSpan &span : survey.spansOf(index)) {
                    ++answers[span.address];
                }
                survey.noteAnswer(index, nowMs * modbusNsPerMs);
            }
        }
        QVERIFY(!wasSilent);
        QCOMPARE(misses, 1);
        QVERIFY2(refusals <= 8, qPrintable(QString::number(refusals))); // one for each halving
        QVERIFY(!answers.contains(100) && answers.contains(98) && answers.contains(102));
        QVERIFY2(answers.value(102) >= 40 && answers.value(102) <= 50, qPrintable(QString::number(answers.value(102))));

        // Spans that are asked for are left out; the last one answered is tried to see whether a silent device is back.
        UnitSurvey two({pairsAt({0, 200}), {}}, LineCost{20}, {});
        qint64 dueNs = 0;
        QCOMPARE(two.next({pairAt(0)}, false, modbusNsPerMs, &dueNs), 1);
        two.noteAnswer(1, modbusNsPerMs);
        QCOMPARE(two.next({pairAt(0)}, false, modbusNsPerMs, &dueNs), int{UnitSurvey::none});
        QCOMPARE(two.next({}, true, modbusNsPerMs, &dueNs), 1);
        QVERIFY(two.noteMiss(1, false, modbusNsPerMs));
    }

    void oneRefusedValueLeavesTheDeviceInUse()
    {
        ModbusServer server;
        server.hole = 100;
        const QVector<int> present{10, 60, 140, 180};
        ModbusProbe probe(ModbusProbe::tcp(server.port()), {pairAt(60)}, {pairsAt({10, 60, 100, 140, 180}), {}});
        QVERIFY(waitUntil([&] {
            REQUIRE(probe.channel.state().trouble.isEmpty() || !probe.channel.state().isKnownToAnswer);
            return probe.channel.state().isKnownToAnswer;
        }));
        QTest::qSleep(1000);
        server.takeRequests();
        for (int count = 0; count < 150; ++count) {
            QCOMPARE(probe.channel.state().trouble, QString());
            QTest::qSleep(10);
        }
        const Spans requests = server.takeRequests();
        QCOMPARE(countOf(requests, 100), 0); // it is known by now
        for (const int address : present) {
            QVERIFY2(countOf(requests, address) > 0, qPrintable(QString::number(address)));
        }
        QVERIFY(probe.ask());
    }

    void noUnaskedReadOfWhatStandsApart()
    {
        ModbusServer server;
        ModbusProbe probe(ModbusProbe::tcp(server.port()), pairsAt({10, 20}), {pairsAt({10, 20, 30}), {pairAt(14)}});
        QTest::qSleep(1500);
        Spans requests = server.takeRequests();
        QVERIFY(countOf(requests, 10) > 0 && countOf(requests, 20) > 0 && countOf(requests, 30) > 0);
        QCOMPARE(countOf(requests, 14), 0);
        QVERIFY(waitUntil([&] { return probe.ask() && probe.statistics().answeredExchanges > 20; }));
        requests = server.takeRequests();
        QVERIFY(countOf(requests, 10) > 5 && countOf(requests, 20) > 5);
        QCOMPARE(countOf(requests, 14), 0);
        // Who asks for it gets it.
        ModbusProbe asking(ModbusProbe::tcp(server.port()), {pairAt(14)});
        QVERIFY(waitUntil([&] { return asking.ask(); }));
    }

    void troubleOfAnUnaskedDevicePasses()
    {
        ModbusServer server;
        ModbusProbe surveyed(ModbusProbe::tcp(server.port()), {pairAt(10)}, {pairsAt({10}), {}});
        ModbusServer other;
        ModbusProbe plain(ModbusProbe::tcp(other.port()), {pairAt(10)});
        QVERIFY(waitUntil([&] { return surveyed.ask() && plain.ask(); }));
        constexpr int busy = 6;
        for (ModbusServer *const each : {&server, &other}) {
            each->exception = busy;
        }
        const auto trouble = [](const ModbusProbe &probe) { return probe.channel.state().trouble; };
        QVERIFY(waitUntil([&] {
            return !surveyed.ask() && !plain.ask() && trouble(surveyed).contains("busy") &&
                   trouble(plain).contains("busy");
        }));
        // A device that is read ahead still shows the trouble; one that is not read any more shows nothing.
        QVERIFY(waitUntil([&] { return trouble(plain).isEmpty(); }, 3000));
        QVERIFY(trouble(surveyed).contains("busy"));
        server.exception = 0;
        QVERIFY(waitUntil([&] { return trouble(surveyed).isEmpty(); }, 3000));
        QVERIFY(surveyed.channel.state().isKnownToAnswer);
    }
};

GUARDED_TEST(ModbusSurveyTest)
#include "ModbusSurveyTest.moc"
