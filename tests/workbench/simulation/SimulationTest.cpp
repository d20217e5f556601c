#include "Exchange.h"
#include "GuardedTest.h"
#include "modules/simulation/AxisMechanics.h"
#include "modules/simulation/ModuleKind.h"
#include "modules/simulation/MotionProgram.h"
#include "modules/simulation/SimulatedMachine.h"
#include "modules/simulation/SimulatedModule.h"
#include "modules/simulation/SimulationClock.h"
#include "modules/simulation/WrappedCounter.h"

#include <cmath>
#include <limits>

namespace
{

/// A request for a value: command, motor or bank, and type, a byte each.
using Request = int;

constexpr Request rampPosition = 0x06'00'02;
constexpr Request rampVelocity = 0x06'00'0B;
constexpr Request rampPhase = 0x06'00'0F;

/// A module of its own clock that is driven by exchanges.
struct ModuleBench
{
    explicit ModuleBench(const QString &kind, quint32 seed = 1, int stepsPerExchange = 14)
        : clock(SimulationClock::Drive::Exchanges, stepsPerExchange)
        , module(new SimulatedModule(*findModuleKind(kind), "SIM0/Device", nullptr, &clock, seed))
        , address(module->moduleAddress())
    {
    }

    /// The values of one exchange.
    QVector<qint32> ask(const QVector<Request> &asked)
    {
        QVector<Command> requests;
        for (const Request request : asked) {
            requests.append(requestFor(address, request >> 16, request >> 8, request));
        }
        Exchange exchange(requests);
        exchange.with(module->commandHandlerInterface());
        QVector<qint32> values;
        for (const CommandCombo &pair : exchange.combos) {
            values.append(pair.reply.value());
            status = pair.reply.status();
        }
        return values;
    }

    void run(int exchanges)
    {
        for (int i = 0; i < exchanges; ++i) {
            ask({});
        }
    }

    SimulationClock clock;
    const QScopedPointer<SimulatedModule> module;
    unsigned char address;
    Command::Status status = Command::Status::Unanswered; ///< of the last reply
};

} // namespace

Q_DECLARE_METATYPE(MotionProgram)

/// The simulated modules: the same answers in every run, consistent with one another and within their limits.
class SimulationTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void answersTheSameInEveryRun_data()
    {
        testRows<Request>({"noisy"}, {{"stepper-3", 0x06'02'1E}, {"servo-1", 0x06'00'14}, {"io-block", 0x94'00'05}});
    }

    /// The same in every run with the same seed, and only to its own address.
    void answersTheSameInEveryRun()
    {
        QFETCH(Request, noisy);
        const QString kind = QLatin1String(QTest::currentDataTag());
        ModuleBench bench(kind, 7);
        ModuleBench again(kind, 7);
        ModuleBench other(kind, 8);
        int different = 0;
        for (int i = 0; i < 200; ++i) {
            // Reading more than once in an exchange must not draw more noise.
            const QVector<qint32> values = bench.ask({noisy, noisy});
            QCOMPARE(values.first(), values.last());
            QCOMPARE(again.ask({noisy}).value(0), values.first());
            different += other.ask({noisy}).value(0) != values.first() ? 1 : 0;
        }
        QVERIFY2(different > 50, qPrintable(QString::number(different)));

        bench.address = 1;
        bench.ask({noisy});
        QVERIFY(bench.status == Command::Status::Refused);
        bench.module->setSilent(true);
        bench.ask({noisy});
        QVERIFY(bench.status == Command::Status::Unanswered);
    }

    void wallClockDrivesWhateverIsAsked()
    {
        SimulationClock clock(SimulationClock::Drive::WallClock);
        const SimulatedMachine machine(&clock, {}, 1);
        const auto steps = [&machine] { return int(machine.testSignals().elapsedMs()); };
        constexpr int hourMs = 3600000; // later than any wall clock of a test
        clock.catchUpTo(hourMs);
        QCOMPARE(steps(), SimulationClock::maximumLagMs); // a stall costs no more than this
        clock.catchUpTo(hourMs + 14);
        for (int exchange = 0; exchange < 8; ++exchange) {
            clock.catchUpTo(hourMs + 14);
        }
        QCOMPARE(steps(), SimulationClock::maximumLagMs + 14);

        SimulationClock exact(SimulationClock::Drive::Exchanges, 3);
        exact.catchUp();
        QCOMPARE(exact.nowMs(), qint64(0));
        exact.beginExchange();
        QCOMPARE(exact.nowMs(), qint64(3));
    }

    void fieldsLieWhereTheirRegisterSays()
    {
        ModuleBench bench("io-block");
        int counters = 0;
        for (int i = 0; i < 600; ++i) {
            const QVector<qint32> values = bench.ask({0x94'00'00, 0x94'00'05, 0x94'00'04});
            const int counter = values.first() & 0xFF;
            counters |= counter;
            QCOMPARE((values.first() >> 8) & 0xFF, counter ^ (counter >> 1)); // its Gray code
            QCOMPARE((values.first() >> 31) & 1, counter & 1);
            QCOMPARE((values.first() >> 20) & 0x7FF, 0); // no field
            const double sine = qint16(values.last() & 0xFFFF);
            const double cosine = qint16(values.last() >> 16);
            QVERIFY(qAbs(std::hypot(sine, cosine) - 10000.0) < 2.0);
            QVERIFY(((values.at(1) & 0xFFF) - 2047.5) * cosine <
                    1000.0); // the triangle is lowest where the cosine is highest
        }
        QVERIFY(counters > 15);
    }

    /// Values of one exchange that have to fit together, whatever the noise.
    void valuesFitTogether()
    {
        ModuleBench stepper("stepper-3", 1, 1);
        const AxisMechanics mechanics;
        stepper.module->setMotion(0, {MotionProgram::Kind::Reciprocate, 60000.0, 1.0, 0.0, 20000.0});
        double minimumPlay = 0.0;
        double maximumPlay = 0.0;
        int closed = 0; // switches that were seen closed, a bit for each
        for (int ms = 0; ms < 9000; ++ms) {
            const QVector<qint32> now = stepper.ask(
                {0x06'00'00, 0x06'00'1E, 0x06'00'51, 0x06'00'52, 0x06'00'33, 0x06'00'35, 0x06'01'02, 0x06'02'02});
            const double position = now.at(0);
            const double play =
                now.at(1) * mechanics.microstepsPerRevolution / mechanics.encoderCountsPerRevolution - position;
            minimumPlay = qMin(minimumPlay, play);
            maximumPlay = qMax(maximumPlay, play);
            QCOMPARE(now.at(2), qint32(position >= mechanics.rightSwitchPosition));
            QCOMPARE(now.at(3), qint32(qAbs(position) <= mechanics.homeSwitchWidth / 2.0));
            closed |= now.at(2) | (now.at(3) << 1);
            QVERIFY(qAbs(now.at(5) - qBound(0, 1023 - qAbs(now.at(4)), 1023)) <= 1); // load reserve, torque current
            if (ms > 4000) {
                QVERIFY(qAbs(std::hypot(now.at(6), now.at(7)) - 51200.0) < 1000.0); // axes 1 and 2 draw a circle
            }
        }
        const double halfPlay = mechanics.backlash / 2.0;
        QVERIFY(qAbs(maximumPlay - halfPlay) < 50.0 && qAbs(minimumPlay + halfPlay) < 50.0);
        QCOMPARE(closed, 3);
        QVERIFY(stepper.ask({0x06'00'36}).constFirst() > 260); // the winding has warmed up, 0.1 degC

        constexpr Request brakeReleased = 0x0F'02'00;
        constexpr Request drivesEnabled = 0x0F'02'01;
        QCOMPARE(stepper.ask({brakeReleased, drivesEnabled}), QVector<qint32>({1, 1}));
        stepper.module->setMoving(false);
        stepper.run(2000);
        QCOMPARE(stepper.ask({brakeReleased, drivesEnabled}), QVector<qint32>({0, 0}));
        QCOMPARE(wrappedCounter(2147483648.0), std::numeric_limits<qint32>::min());
        QCOMPARE(wrappedCounter(-2147483649.0), std::numeric_limits<qint32>::max());

        ModuleBench servo("servo-1", 1, 1);
        int switches = 0; // that were seen closed
        int noisy = 0;
        for (int ms = 0; ms < 9000; ++ms) {
            const QVector<qint32> now = servo.ask({0x06'00'03, 0x06'00'0A, 0x06'00'0B, 0x0F'00'00, 0x0F'00'01});
            QCOMPARE(now.at(3), qint32(now.at(0) <= -128000));
            QCOMPARE(now.at(4), qint32(now.at(0) >= 128000));
            switches |= now.at(3) | (now.at(4) << 1);
            noisy += now.at(1) != now.at(2) ? 1 : 0; // the velocity that is and the one that is wanted
        }
        QVERIFY(switches == 3 && noisy > 8000);
    }

    void whatDoesNotMoveStops()
    {
        ModuleBench block("io-block");
        block.run(100);
        block.module->setMoving(false);
        const QVector<qint32> stopped = block.ask({0x94'00'00, 0x94'00'04});
        block.run(100);
        QCOMPARE(block.ask({0x94'00'00, 0x94'00'04}), stopped);
    }

    void rampKeepsItsLimits_data()
    {
        const double huge = std::numeric_limits<double>::max();
        using Kind = MotionProgram::Kind;
        testRows<MotionProgram>({"motion"}, {{"hold far", {Kind::Hold, 0.0, 1.0, 0.0, 150000.0}},
                                             {"hold near, backwards", {Kind::Hold, 0.0, 1.0, 0.0, -37.0}},
                                             {"long way", {Kind::Reciprocate, 76800.0, 1.0, 0.0, 500.0}},
                                             {"short way", {Kind::Reciprocate, 900.0, 1.0, 0.0, 500.0}},
                                             {"sine out of reach", {Kind::Sine, 512000.0, 1.0, 0.0, 500.0}},
                                             {"unusable", {Kind::Sine, huge, 0.0, qQNaN(), qInf()}}});
    }

    void rampKeepsItsLimits()
    {
        QFETCH(MotionProgram, motion);
        ModuleBench bench("stepper-3", 1, 1);
        bench.module->setMotion(0, motion);
        const AxisMechanics limits;
        constexpr double rounding = 1.0;
        using Phase = SimulatedAxis::RampPhase;
        qint32 position = 0;
        qint32 velocity = 0;
        qint32 lowest = 0;
        qint32 highest = 0;
        for (int ms = 0; ms < 12000; ++ms) {
            const QVector<qint32> next = bench.ask({rampPosition, rampPhase, rampVelocity});
            const double change = (next.last() - velocity) / SimulationClock::stepSeconds;
            const double way = (velocity + next.last()) / 2.0 * SimulationClock::stepSeconds;
            const int gain = qAbs(next.last()) - qAbs(velocity);
            if (qAbs(gain) > 1 && next.last() != 0 && (velocity < 0) == (next.last() < 0)) {
                QCOMPARE(Phase(next.at(1)), gain > 0 ? Phase::Accelerating : Phase::Braking);
            }
            QVERIFY(qAbs(next.last()) <= limits.maximumVelocity + rounding);
            QVERIFY(std::abs(change) <= limits.maximumAcceleration + rounding / SimulationClock::stepSeconds);
            QVERIFY(std::abs(next.first() - position - way) <= 2.0 * rounding);
            position = next.first();
            velocity = next.last();
            lowest = qMin(lowest, position);
            highest = qMax(highest, position);
        }
        if (motion.kind != MotionProgram::Kind::Sine) {
            QCOMPARE(double(lowest), qMin(0.0, motion.offset - motion.amplitude)); // the ends are reached, not passed
            QCOMPARE(double(highest), qMax(0.0, motion.offset + motion.amplitude));
        }
        bench.module->setMoving(false);
        bench.run(5000);
        const QVector<qint32> stopped = bench.ask({rampPosition});
        QCOMPARE(bench.ask({rampPosition}), stopped);
    }
};

GUARDED_TEST(SimulationTest)
#include "SimulationTest.moc"
