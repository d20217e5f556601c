#include "SimulatedAxis.h"
#include "SimulationClock.h"

#include "GuardedTest.h"

#include <QPointF>
#include <QVector>

#include <cmath>
#include <limits>

Q_DECLARE_METATYPE(MotionProgram::Kind)

namespace
{

constexpr int settlingMs = 3000;

MotionProgram program(MotionProgram::Kind kind, double amplitude, double offset = 0.0)
{
    MotionProgram result;
    result.kind = kind;
    result.amplitude = amplitude;
    result.offset = offset;
    return result;
}

/// Runs an axis and counts the milliseconds.
class RunningAxis
{
public:
    explicit RunningAxis(const MotionProgram &motion, const AxisMechanics &mechanics = AxisMechanics(),
                         quint32 seed = 1)
        : axis(mechanics, motion, seed)
    {
    }

    void run(int milliseconds)
    {
        for (int i = 0; i < milliseconds; ++i) {
            ++m_nowMs;
            axis.step(static_cast<double>(m_nowMs) * SimulationClock::stepSeconds);
        }
    }

    SimulatedAxis axis;

private:
    qint64 m_nowMs = 0;
};

/// Twice the area that the points go round, by the shoelace formula.
double doubledArea(const QVector<QPointF> &points)
{
    double sum = 0.0;
    for (int i = 0; i < points.size(); ++i) {
        const QPointF &here = points.at(i);
        const QPointF &next = points.at((i + 1) % points.size());
        sum += here.x() * next.y() - next.x() * here.y();
    }
    return std::abs(sum);
}

class StepCounter : public Steppable
{
public:
    void step() override
    {
        ++steps;
    }

    int steps = 0;
};

} // namespace

class SimulationMotionTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void rampKeepsItsLimits_data();
    void rampKeepsItsLimits();
    void holdEndsOnTheTarget_data();
    void holdEndsOnTheTarget();
    void switchedOffAxisBrakesAndGoesOn();
    void encoderLagsBehindByThePlay();
    void sinePairDrawsACircle();
    void countersWrap();
    void unusableProgramsDoNoHarm();
    void clockStepsWithExchangesOnly();
    void wallClockCatchesUp();
};

void SimulationMotionTest::rampKeepsItsLimits_data()
{
    QTest::addColumn<MotionProgram::Kind>("kind");
    QTest::addColumn<double>("amplitude");
    QTest::addColumn<double>("periodSeconds");
    QTest::newRow("long way") << MotionProgram::Kind::Reciprocate << 76800.0 << 1.0;
    QTest::newRow("short way, never at full speed") << MotionProgram::Kind::Reciprocate << 900.0 << 1.0;
    QTest::newRow("sine within reach") << MotionProgram::Kind::Sine << 51200.0 << 4.0;
    QTest::newRow("sine out of reach") << MotionProgram::Kind::Sine << 512000.0 << 1.0;
}

void SimulationMotionTest::rampKeepsItsLimits()
{
    QFETCH(MotionProgram::Kind, kind);
    QFETCH(double, amplitude);
    QFETCH(double, periodSeconds);
    MotionProgram motion = program(kind, amplitude, 500.0);
    motion.periodSeconds = periodSeconds;
    RunningAxis running(motion);
    const AxisMechanics &limits = running.axis.mechanics();
    const double greatestChange = limits.maximumAcceleration * SimulationClock::stepSeconds;

    constexpr double rounding = 1.0;
    constexpr int runMs = 12000;
    double velocity = 0.0;
    double position = 0.0;
    double fastest = 0.0;
    for (int i = 0; i < runMs; ++i) {
        running.run(1);
        const double nextVelocity = running.axis.rampVelocity();
        const double nextPosition = running.axis.rampPosition();
        QVERIFY2(std::abs(nextVelocity) <= limits.maximumVelocity + rounding, qPrintable(QString::number(i)));
        QVERIFY2(std::abs(nextVelocity - velocity) <= greatestChange + rounding, qPrintable(QString::number(i)));
        const double wayOfVelocity = (velocity + nextVelocity) / 2.0 * SimulationClock::stepSeconds;
        QVERIFY2(std::abs(nextPosition - position - wayOfVelocity) <= 2.0 * rounding, qPrintable(QString::number(i)));
        velocity = nextVelocity;
        position = nextPosition;
        fastest = qMax(fastest, std::abs(velocity));
    }
    // The greatest velocity on a way s that is too short for full speed is sqrt(a s).
    if (kind == MotionProgram::Kind::Reciprocate) {
        const double peak = qMin(limits.maximumVelocity, std::sqrt(limits.maximumAcceleration * 2.0 * amplitude));
        QVERIFY2(std::abs(fastest - peak) < 0.02 * peak, qPrintable(QString::number(fastest)));
        QVERIFY(running.axis.completedMoves() > 3);
    }
}

void SimulationMotionTest::holdEndsOnTheTarget_data()
{
    QTest::addColumn<double>("target");
    QTest::newRow("far") << 150000.0;
    QTest::newRow("near, backwards") << -37.0;
    QTest::newRow("one microstep") << 1.0;
    QTest::newRow("here") << 0.0;
}

void SimulationMotionTest::holdEndsOnTheTarget()
{
    QFETCH(double, target);
    RunningAxis running(program(MotionProgram::Kind::Hold, 0.0, target));
    const double direction = std::copysign(1.0, target);
    double furthest = 0.0;
    for (int i = 0; i < settlingMs; ++i) {
        running.run(1);
        furthest = qMax(furthest, direction * running.axis.rampPosition());
    }
    QCOMPARE(running.axis.rampPosition(), qRound(target));
    QCOMPARE(furthest, std::abs(target)); // never beyond it
    QCOMPARE(running.axis.rampVelocity(), 0);
    QCOMPARE(running.axis.rampPhase(), SimulatedAxis::RampPhase::Resting);
    QVERIFY(running.axis.isTargetReached());
    QVERIFY(std::abs(running.axis.actualPosition() - target) <= 1.0);
}

void SimulationMotionTest::switchedOffAxisBrakesAndGoesOn()
{
    RunningAxis running(program(MotionProgram::Kind::Reciprocate, 76800.0));
    running.run(600);
    QCOMPARE(running.axis.rampPhase(), SimulatedAxis::RampPhase::Cruising);
    running.axis.setMoving(false);
    running.run(100);
    QCOMPARE(running.axis.rampPhase(), SimulatedAxis::RampPhase::Braking);
    running.run(1000);
    QCOMPARE(running.axis.rampPhase(), SimulatedAxis::RampPhase::Resting);
    QVERIFY(!running.axis.isTargetReached());
    const qint32 stopped = running.axis.rampPosition();
    running.run(1000);
    QCOMPARE(running.axis.rampPosition(), stopped);
    running.axis.setMoving(true);
    running.run(200);
    QVERIFY(running.axis.rampPosition() > stopped);
}

void SimulationMotionTest::encoderLagsBehindByThePlay()
{
    AxisMechanics mechanics;
    mechanics.encoderCountsPerRevolution = mechanics.microstepsPerRevolution;
    constexpr double amplitude = 51200.0;
    MotionProgram motion = program(MotionProgram::Kind::Sine, amplitude);
    motion.periodSeconds = 4.0;
    RunningAxis running(motion, mechanics);
    running.run(8000);
    QVector<QPointF> loop;
    for (int i = 0; i < 400; ++i) {
        running.run(10);
        loop.append(QPointF(running.axis.actualPosition(), running.axis.encoderPosition()));
    }
    // The loop is a parallelogram: the encoder's way times the play.
    const double expected = (2.0 * amplitude - mechanics.backlash) * mechanics.backlash;
    const double area = doubledArea(loop) / 2.0;
    QVERIFY2(std::abs(area - expected) < 0.03 * expected, qPrintable(QString::number(area / expected)));
}

void SimulationMotionTest::sinePairDrawsACircle()
{
    constexpr double radius = 51200.0;
    MotionProgram sine = program(MotionProgram::Kind::Sine, radius, 10000.0);
    RunningAxis first(sine);
    sine.phaseDegrees = 90.0;
    RunningAxis second(sine, AxisMechanics(), 2);
    first.run(settlingMs);
    second.run(settlingMs);
    double leftmost = 0.0;
    for (int i = 0; i < 4000; ++i) {
        first.run(1);
        second.run(1);
        const double x = first.axis.actualPosition() - 10000.0;
        const double y = second.axis.actualPosition() - 10000.0;
        leftmost = qMin(leftmost, x);
        QVERIFY2(std::abs(std::hypot(x, y) - radius) < 0.005 * radius, qPrintable(QString::number(i)));
    }
    QVERIFY(leftmost < -0.99 * radius);
}

void SimulationMotionTest::countersWrap()
{
    constexpr double beyond = 2147483648.0 + 2000.0;
    AxisMechanics fast;
    fast.maximumVelocity = 1e9;
    fast.maximumAcceleration = 1e10;
    RunningAxis running(program(MotionProgram::Kind::Hold, 0.0, beyond), fast);
    running.run(settlingMs);
    QCOMPARE(running.axis.rampPosition(), std::numeric_limits<qint32>::min() + 2000);
    QVERIFY(qAbs(running.axis.followingError()) <= 1);
}

void SimulationMotionTest::unusableProgramsDoNoHarm()
{
    RunningAxis running(program(MotionProgram::Kind::Sine, 1000.0));
    MotionProgram unusable = program(MotionProgram::Kind::Sine, std::numeric_limits<double>::max());
    unusable.periodSeconds = 0.0;
    unusable.phaseDegrees = std::numeric_limits<double>::quiet_NaN();
    unusable.offset = std::numeric_limits<double>::infinity();
    running.axis.setProgram(unusable);
    running.run(100);
    running.axis.setProgram(program(MotionProgram::Kind::Hold, 0.0, 300.0));
    running.run(settlingMs);
    QCOMPARE(running.axis.rampPosition(), 300);
}

void SimulationMotionTest::clockStepsWithExchangesOnly()
{
    SimulationClock clock(SimulationClock::Drive::Exchanges, 14);
    StepCounter stays;
    StepCounter leaves;
    clock.add(&stays);
    clock.add(&leaves);
    clock.exchangeBegins();
    clock.remove(&leaves);
    clock.remove(&leaves);
    clock.exchangeBegins();
    QCOMPARE(stays.steps, 28);
    QCOMPARE(leaves.steps, 14);
    QCOMPARE(clock.nowMs(), qint64(28));
}

void SimulationMotionTest::wallClockCatchesUp()
{
    QElapsedTimer longer;
    longer.start();
    SimulationClock clock(SimulationClock::Drive::WallClock);
    StepCounter counter;
    clock.add(&counter);
    QElapsedTimer shorter;
    shorter.start();
    while (shorter.elapsed() < 5) {
        QCOMPARE(counter.steps, 0);
    }
    const qint64 leastMs = qMin<qint64>(shorter.elapsed(), SimulationClock::maximumLagMs);
    clock.exchangeBegins();
    QVERIFY(clock.nowMs() >= leastMs);
    QVERIFY(clock.nowMs() <= longer.elapsed());
    QCOMPARE(qint64(counter.steps), clock.nowMs());
}

GUARDED_TEST_MAIN(SimulationMotionTest)
#include "SimulationMotionTest.moc"
