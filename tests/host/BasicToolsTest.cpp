#include "host/BasicTools.h"
#include "GuardedTest.h"

#include <cmath>
#include <limits>
#include <random>

namespace
{

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double largest = std::numeric_limits<double>::max();

/// What every axis must be, whatever it was made from; empty when it is.
QString faultOf(double min, double max, unsigned int ticks)
{
    if (!std::isfinite(min) || !std::isfinite(max) || !(min < max) || ticks < 1 || !std::isfinite(max - min)) {
        return QStringLiteral("no axis");
    }
    const double step = (max - min) / ticks;
    const double mantissa = step / std::pow(10.0, std::floor(std::log10(step * (1.0 + 1e-3))));
    if (std::fabs(mantissa - 1.0) > 1e-3 && std::fabs(mantissa - 2.0) > 1e-3 && std::fabs(mantissa - 5.0) > 1e-3) {
        return QStringLiteral("step %1").arg(step);
    }
    const double count = min / step;
    if (std::fabs(count) < 1e4 && std::fabs(count - std::round(count)) > 1e-6) {
        return QStringLiteral("no multiple of %1").arg(step);
    }
    double minAgain = min;
    double maxAgain = max;
    unsigned int ticksAgain = ticks;
    BasicTools::adjustLinearAxis(minAgain, maxAgain, ticksAgain);
    if (minAgain != min || maxAgain != max || ticksAgain != ticks) {
        return QStringLiteral("becomes %1..%2/%3").arg(minAgain).arg(maxAgain).arg(ticksAgain);
    }
    return {};
}

} // namespace

class BasicToolsTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void roundsAxis_data()
    {
        QTest::addColumn<double>("min");
        QTest::addColumn<double>("max");
        QTest::addColumn<unsigned int>("ticks");
        QTest::addColumn<double>("newMin");
        QTest::addColumn<double>("newMax");
        QTest::addColumn<unsigned int>("newTicks");
        QTest::newRow("default") << 0.0 << 10.0 << 5U << 0.0 << 10.0 << 5U;
        QTest::newRow("plot at start") << -10.0 << 10.0 << 5U << -10.0 << 10.0 << 4U;
        QTest::newRow("first sample") << 6.5 << 7.5 << 5U << 6.4 << 7.6 << 6U;
        QTest::newRow("steps of 0.2") << 0.0 << 1.0 << 5U << 0.0 << 1.0 << 5U;
        QTest::newRow("third tick of 0.2") << 0.6 << 1.4 << 5U << 0.6 << 1.4 << 4U;
        QTest::newRow("swapped") << 10.0 << 0.0 << 5U << 0.0 << 10.0 << 5U;
        QTest::newRow("too few intervals wanted") << 0.0 << 10.0 << 0U << 0.0 << 10.0 << 5U;
        QTest::newRow("too many intervals wanted") << 0.0 << 10.0 << 4000000000U << 0.0 << 10.0 << 10U;
        QTest::newRow("eleven intervals become six") << 0.5 << 10.4 << 10U << 0.0 << 12.0 << 6U;
        QTest::newRow("empty") << 5.0 << 5.0 << 5U << 4.0 << 6.0 << 4U;
    }

    void roundsAxis()
    {
        QFETCH(double, min);
        QFETCH(double, max);
        QFETCH(unsigned int, ticks);
        BasicTools::adjustLinearAxis(min, max, ticks);
        QTEST(ticks, "newTicks");
        // Exact: a tick that is off by rounding noise loses its label.
        QVERIFY2(min == *static_cast<const double *>(QTest::qData("newMin", QMetaType::Double)),
                 qPrintable(QString::number(min, 'g', 17)));
        QVERIFY2(max == *static_cast<const double *>(QTest::qData("newMax", QMetaType::Double)),
                 qPrintable(QString::number(max, 'g', 17)));
    }

    void makesAnAxisOfAnything_data()
    {
        QTest::addColumn<double>("min");
        QTest::addColumn<double>("max");
        QTest::newRow("zero") << 0.0 << 0.0;
        QTest::newRow("empty where one more is lost") << 1e17 << 1e17;
        QTest::newRow("next number") << 1e15 << std::nextafter(1e15, infinity);
        QTest::newRow("least numbers") << 0.0 << std::numeric_limits<double>::denorm_min();
        QTest::newRow("largest span") << -largest << largest;
        QTest::newRow("largest empty") << largest << largest;
        QTest::newRow("infinite") << -infinity << infinity;
        QTest::newRow("half infinite") << infinity << 3.0;
        QTest::newRow("no numbers") << notANumber << notANumber;
        QTest::newRow("half a number") << notANumber << -7.0;
    }

    void makesAnAxisOfAnything()
    {
        QFETCH(double, min);
        QFETCH(double, max);
        unsigned int ticks = 5;
        BasicTools::adjustLinearAxis(min, max, ticks);
        QCOMPARE(faultOf(min, max, ticks), QString());
    }

    void holdsItsPromisesForManyRanges()
    {
        std::mt19937 random(20260401);
        std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
        std::uniform_int_distribution<int> exponent(-200, 200);
        std::uniform_int_distribution<int> nearness(0, 12);
        std::uniform_int_distribution<unsigned int> intervals(0, 15);
        for (int round = 0; round < 20000; ++round) {
            const double from = mantissa(random) * std::pow(10.0, exponent(random));
            const double to = from + mantissa(random) * std::fabs(from) * std::pow(10.0, 1 - nearness(random));
            double min = from;
            double max = to;
            unsigned int ticks = intervals(random);
            BasicTools::adjustLinearAxis(min, max, ticks);
            const QString fault = min <= qMin(from, to) && max >= qMax(from, to) && ticks <= 10
                                      ? faultOf(min, max, ticks)
                                      : QStringLiteral("does not enclose");
            QVERIFY2(fault.isEmpty(), qPrintable(QStringLiteral("%1..%2: %3").arg(from).arg(to).arg(fault)));
        }
    }

    void groupsDigits_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<int>("decimals");
        QTest::addColumn<QString>("text");
        QTest::newRow("no group") << 100.0 << 0 << "100";
        QTest::newRow("groups") << -2147483648.0 << 0 << "-2.147.483.648";
        QTest::newRow("decimals are not grouped") << 1234.56789 << 4 << "1.234,5679";
        QTest::newRow("rounded up into a group") << 999.6 << 0 << "1.000";
        QTest::newRow("negative zero") << -0.0 << 0 << "0";
        QTest::newRow("rounded to zero") << -0.004 << 2 << "0,00";
        QTest::newRow("not quite zero") << -0.006 << 2 << "-0,01";
        QTest::newRow("too few decimals") << 2.4 << -3 << "2";
        QTest::newRow("infinite") << -infinity << 0 << "-inf";
        QTest::newRow("no number") << notANumber << 2 << "nan";
    }

    void groupsDigits()
    {
        QFETCH(double, value);
        QFETCH(int, decimals);
        QTEST(BasicTools::intInsertDot(value, decimals), "text");
    }

    void writesHexadecimal()
    {
        QCOMPARE(BasicTools::iToHex(0x0A, 2, QStringLiteral("0x")), QStringLiteral("0x0A"));
        QCOMPARE(BasicTools::iToHex(0xFF, 1, QString()), QStringLiteral("FF"));
        QCOMPARE(BasicTools::iToHex(0, 4, QStringLiteral("$")), QStringLiteral("$0000"));
    }
};

GUARDED_TEST_MAIN(BasicToolsTest)
#include "BasicToolsTest.moc"
