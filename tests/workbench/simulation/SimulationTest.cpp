#include "AxisMechanics.h"
#include "GuardedTest.h"
#include "MotionProgram.h"
#include "SimulatedModule.h"
#include "SimulationClock.h"
#include "host/CommandHandlerInterface.h"
#include "host/ParameterType.h"
#include "host/Register.h"

#include <QElapsedTimer>

#include <cmath>
#include <limits>
#include <set>

namespace
{

/// A value that can be asked for: command, motor or bank, and type, a byte each.
using Request = int;

constexpr Request actualPosition = 0x06'00'00;
constexpr Request rampPosition = 0x06'00'02;
constexpr Request isTargetReached = 0x06'00'04;
constexpr Request actualVelocity = 0x06'00'0A;
constexpr Request rampVelocity = 0x06'00'0B;
constexpr Request encoderPosition = 0x06'00'1E;
constexpr Request encoderDeviation = 0x06'00'1F;
constexpr Request motorCurrent = 0x06'00'32;
constexpr Request temperature = 0x06'00'36;
constexpr Request axis1 = 0x00'01'00; ///< to be added
constexpr Request axis2 = 0x00'02'00; ///< to be added

/// A module of its own clock that is driven by exchanges.
class Bench
{
public:
    explicit Bench(const QString &kind, quint32 seed = 1, int stepsPerExchange = 14)
        : clock(SimulationClock::Drive::Exchanges, stepsPerExchange)
        , module(createModule(kind, QStringLiteral("SIM0/Device"), nullptr, &clock, seed))
        , address(module->moduleAddress())
    {
    }

    /// The values of one exchange.
    QVector<qint32> ask(const QVector<Request> &requests)
    {
        QVector<CommandCombo> pairs(requests.size());
        QList<CommandCombo *> pointers;
        for (int i = 0; i < requests.size(); ++i) {
            pairs[i].request.setAddress(address);
            pairs[i].request.setCommand(static_cast<unsigned char>(requests.at(i) >> 16));
            pairs[i].request.setMotorBank(static_cast<unsigned char>(requests.at(i) >> 8));
            pairs[i].request.setType(static_cast<unsigned char>(requests.at(i)));
            pointers.append(&pairs[i]);
        }
        module->commandHandlerInterface()->sendCommandCombos(pointers);
        QVector<qint32> values;
        for (const CommandCombo &pair : qAsConst(pairs)) {
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

/// Everything that a module lists as readable, as a reader of its parameter maps and registers finds it.
std::multiset<Request> readableValues(SimulatedModule &module)
{
    const QVector<QPair<QString, Request>> maps = {{"axis0", 0x06'00'00},
                                                   {"axis1", 0x06'01'00},
                                                   {"axis2", 0x06'02'00},
                                                   {"global2", 0x0A'02'00},
                                                   {ParameterType::DigitalInput, 0x0F'00'00},
                                                   {ParameterType::AnalogInput, 0x0F'01'00},
                                                   {ParameterType::DigitalOutput, 0x0F'02'00}};
    std::multiset<Request> readable;
    for (const QPair<QString, Request> &map : maps) {
        const QMap<QString, Parameter> *const parameters = module.getParameterMapByName(map.first);
        for (const Parameter &parameter : parameters == nullptr ? QMap<QString, Parameter>() : *parameters) {
            if (parameter.access.contains(QLatin1Char('r'))) {
                readable.insert(map.second + parameter.number);
            }
        }
    }
    const QList<Register *> registers = module.registers();
    for (const Register *entry : registers) {
        if (entry->kind() != Register::Writable) {
            readable.insert((module.getChannel() == 1 ? 0x95'00'00 : 0x94'00'00) + entry->getOffset());
        }
    }
    return readable;
}

qint32 signedField(qint32 value, int offset, int width)
{
    return static_cast<qint32>(static_cast<quint32>(value) << (32 - offset - width)) >> (32 - width);
}

} // namespace

Q_DECLARE_METATYPE(MotionProgram)

class SimulationTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void answersWhatItLists_data()
    {
        QTest::addColumn<int>("leastListed");
        QTest::addColumn<Request>("noisy");
        QTest::newRow("stepper-3") << 80 << encoderPosition + axis2;
        QTest::newRow("servo-1") << 20 << 0x06'00'14;
        QTest::newRow("io-block") << 10 << 0x94'00'05;
    }

    /// Every listed value, once, and nothing else; the same in every run with the same seed.
    void answersWhatItLists()
    {
        QFETCH(int, leastListed);
        QFETCH(Request, noisy);
        const QString kind = QLatin1String(QTest::currentDataTag());
        Bench bench(kind, 7);
        Bench again(kind, 7);
        Bench other(kind, 8);
        int different = 0;
        for (int i = 0; i < 200; ++i) {
            // Reading more than once in an exchange must not draw more noise.
            const QVector<qint32> values = bench.ask({noisy, noisy});
            QCOMPARE(values.first(), values.last());
            QCOMPARE(again.ask({noisy}).value(0), values.first());
            different += other.ask({noisy}).value(0) != values.first() ? 1 : 0;
        }
        QVERIFY2(different > 50, qPrintable(QString::number(different)));

        const std::multiset<Request> readable = readableValues(*bench.module);
        QVERIFY(static_cast<int>(readable.size()) >= leastListed);
        for (const int command : {0, 5, 6, 10, 15, 147, 148, 149}) {
            for (int bankAndType = 0; bankAndType < 5 * 256; ++bankAndType) {
                const Request request = (command << 16) + bankAndType;
                bench.ask({request});
                QVERIFY2(readable.count(request) == (bench.status == Command::Status::Answered ? 1 : 0),
                         qPrintable(QString::number(request, 16)));
            }
        }
        bench.address = 1;
        bench.ask({noisy});
        QVERIFY(bench.status == Command::Status::Refused);
    }

    void rampKeepsItsLimits_data()
    {
        const double huge = std::numeric_limits<double>::max();
        const double infinity = std::numeric_limits<double>::infinity();
        const double notANumber = std::numeric_limits<double>::quiet_NaN();
        QTest::addColumn<MotionProgram>("motion");
        QTest::newRow("hold far") << MotionProgram{MotionProgram::Kind::Hold, 0.0, 1.0, 0.0, 150000.0};
        QTest::newRow("hold near, backwards") << MotionProgram{MotionProgram::Kind::Hold, 0.0, 1.0, 0.0, -37.0};
        QTest::newRow("long way") << MotionProgram{MotionProgram::Kind::Reciprocate, 76800.0, 1.0, 0.0, 500.0};
        QTest::newRow("short way") << MotionProgram{MotionProgram::Kind::Reciprocate, 900.0, 1.0, 0.0, 500.0};
        QTest::newRow("sine within reach") << MotionProgram{MotionProgram::Kind::Sine, 51200.0, 4.0, 0.0, 500.0};
        QTest::newRow("sine out of reach") << MotionProgram{MotionProgram::Kind::Sine, 512000.0, 1.0, 0.0, 500.0};
        QTest::newRow("unusable") << MotionProgram{MotionProgram::Kind::Sine, huge, 0.0, notANumber, infinity};
    }

    void rampKeepsItsLimits()
    {
        QFETCH(MotionProgram, motion);
        Bench bench(QStringLiteral("stepper-3"), 1, 1);
        bench.module->setMotion(0, motion);
        const AxisMechanics limits;
        constexpr double rounding = 1.0;
        qint32 position = 0;
        qint32 velocity = 0;
        qint32 fastest = 0;
        qint32 lowest = 0;
        qint32 highest = 0;
        for (int ms = 0; ms < 12000; ++ms) {
            const QVector<qint32> next = bench.ask({rampPosition, rampVelocity});
            const double change = (next.last() - velocity) / SimulationClock::stepSeconds;
            const double way = (velocity + next.last()) / 2.0 * SimulationClock::stepSeconds;
            fastest = qMax(fastest, qAbs(next.last()));
            QVERIFY(fastest <= limits.maximumVelocity + rounding);
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
        if (motion.kind == MotionProgram::Kind::Reciprocate) {
            // The greatest velocity on a way s that is too short for full speed is sqrt(a s).
            const double way = 2.0 * motion.amplitude;
            const double peak = qMin(limits.maximumVelocity, std::sqrt(limits.maximumAcceleration * way));
            QVERIFY2(std::abs(fastest - peak) < 0.02 * peak, qPrintable(QString::number(fastest)));
        }

        bench.module->setMotion(0, {MotionProgram::Kind::Hold, 0.0, 1.0, 0.0, 300.0});
        bench.run(15000);
        QCOMPARE(bench.ask({rampPosition, rampVelocity, isTargetReached}), QVector<qint32>({300, 0, 1}));
        QVERIFY(qAbs(bench.ask({actualPosition}).value(0) - 300) <= 1);
    }

    void movesUntilSwitchedOff()
    {
        Bench bench(QStringLiteral("stepper-3"));
        const QVector<Request> positions = {rampPosition, rampPosition + axis1, rampPosition + axis2};
        bench.run(40);
        bench.module->setMoving(false);
        bench.run(100);
        const QVector<qint32> stopped = bench.ask(positions);
        QCOMPARE(bench.ask(positions), stopped);
        bench.module->setMoving(true);
        bench.run(40);
        const QVector<qint32> moved = bench.ask(positions);
        for (int axis = 0; axis < 3; ++axis) {
            QVERIFY2(moved.at(axis) != stopped.at(axis), qPrintable(QString::number(axis)));
        }
        bench.module->setMotion(3, MotionProgram()); // no such axis
        bench.module->setMotion(-1, MotionProgram());
        bench.module->setSilent(true);
        bench.ask(positions);
        QVERIFY(bench.status == Command::Status::Unanswered);
        QCOMPARE(bench.clock.nowMs(), qint64(184 * 14)); // it keeps on moving
    }

    void curvesHaveTheirShapes()
    {
        constexpr double radius = 51200.0;
        Bench bench(QStringLiteral("stepper-3"), 1, 10);
        bench.module->setMotion(0, {MotionProgram::Kind::Sine, radius, 4.0, 0.0, 0.0});
        bench.run(800);
        QVector<qint32> here = bench.ask({actualPosition, encoderPosition});
        double doubledArea = 0.0;
        for (int i = 0; i < 400; ++i) {
            const QVector<qint32> next =
                bench.ask({actualPosition, encoderPosition, actualPosition + axis1, actualPosition + axis2});
            doubledArea += double(here.at(0)) * next.at(1) - double(next.at(0)) * here.at(1);
            here = next;
            QVERIFY(std::abs(std::hypot(here.at(2), here.at(3)) - radius) < 0.005 * radius);
        }
        // The encoder lags behind by the play; the loop is a parallelogram: the encoder's way times the play.
        const AxisMechanics mechanics;
        const double encoderScale = mechanics.encoderCountsPerRevolution / mechanics.microstepsPerRevolution;
        const double expected = (2.0 * radius - mechanics.backlash) * mechanics.backlash * encoderScale;
        const double area = std::abs(doubledArea) / 2.0;
        QVERIFY2(std::abs(area - expected) < 0.03 * expected, qPrintable(QString::number(area / expected)));
    }

    void fieldsAgreeWithWhatTheyMirror()
    {
        Bench bench(QStringLiteral("stepper-3"));
        qint32 least = 0;
        qint32 greatest = 0;
        for (int i = 0; i < 400; ++i) {
            const QVector<qint32> read =
                bench.ask({actualVelocity, motorCurrent, temperature, encoderDeviation, actualPosition, 0x95'00'10,
                           0x95'00'11, 0x95'00'13, 0x95'00'20, 0x95'00'12});
            QCOMPARE(signedField(read.at(5), 0, 20), read.at(0));
            QCOMPARE(read.at(6) & 0xFFF, read.at(1));
            QCOMPARE((read.at(6) >> 12) & 0x3FF, read.at(2));
            QCOMPARE(signedField(read.at(7), 0, 16), read.at(3));
            QCOMPARE(read.at(8), read.at(4));
            QVERIFY(std::abs(std::hypot(signedField(read.at(9), 10, 9), signedField(read.at(9), 19, 9)) - 248.0) < 1.0);
            least = qMin(least, read.at(0));
            greatest = qMax(greatest, read.at(0));
        }
        QVERIFY(least < -50000 && greatest > 50000);
    }

    void wallClockCatchesUp()
    {
        QElapsedTimer longer;
        longer.start();
        SimulationClock clock(SimulationClock::Drive::WallClock);
        delete createModule(QStringLiteral("servo-1"), QString(), nullptr, &clock, 1); // leaves its clock
        QElapsedTimer shorter;
        shorter.start();
        while (shorter.elapsed() < 5) {
            QCOMPARE(clock.nowMs(), qint64(0));
        }
        const qint64 leastMs = qMin<qint64>(shorter.elapsed(), SimulationClock::maximumLagMs);
        clock.exchangeBegins();
        QVERIFY(clock.nowMs() >= leastMs);
        QVERIFY(clock.nowMs() <= longer.elapsed());
    }
};

GUARDED_TEST_MAIN(SimulationTest)
#include "SimulationTest.moc"
