#include "modules/modbus/ReadPlan.h"
#include "GuardedTest.h"
#include "modules/modbus/ConnectionSettings.h"

#include <QRandomGenerator>

namespace
{

using Spans = QVector<RegisterSpan>;

RegisterSpan holding(int address, int count)
{
    return {ModbusTable::HoldingRegister, static_cast<quint16>(address), static_cast<quint16>(count)};
}

RegisterSpan coils(int address, int count)
{
    return {ModbusTable::Coil, static_cast<quint16>(address), static_cast<quint16>(count)};
}

ConnectionSettings serial(int baud)
{
    ConnectionSettings settings;
    settings.medium = ConnectionSettings::Medium::Rtu;
    settings.baud = baud;
    return settings;
}

bool contains(const RegisterSpan &outer, const RegisterSpan &inner)
{
    return outer.table == inner.table && outer.address <= inner.address && inner.end() <= outer.end();
}

} // namespace

Q_DECLARE_METATYPE(RegisterSpan)

/// Which requests read a group of spans.
class ReadPlanTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void requestsAreTheCheapest_data();
    void requestsAreTheCheapest();
    void everySpanIsReadWholeByOneRequest();
    void slowerLinesBridgeShorterGaps();
};

void ReadPlanTest::requestsAreTheCheapest_data()
{
    QTest::addColumn<Spans>("spans");
    QTest::addColumn<Spans>("refused");
    QTest::addColumn<Spans>("expected");

    // A request costs as much as 20 bytes.
    QTest::newRow("touching") << Spans{holding(10, 2), holding(12, 2)} << Spans{} << Spans{holding(10, 4)};
    QTest::newRow("the other way round") << Spans{holding(12, 2), holding(10, 2)} << Spans{} << Spans{holding(10, 4)};
    QTest::newRow("the same twice") << Spans{holding(10, 2), holding(10, 2)} << Spans{} << Spans{holding(10, 2)};
    QTest::newRow("one inside the other") << Spans{holding(10, 1), holding(8, 6)} << Spans{} << Spans{holding(8, 6)};
    QTest::newRow("cheap gap") << Spans{holding(0, 1), holding(10, 1)} << Spans{} << Spans{holding(0, 11)};
    QTest::newRow("dear gap") << Spans{holding(0, 1), holding(12, 1)} << Spans{}
                              << Spans{holding(0, 1), holding(12, 1)};
    QTest::newRow("gap of bits") << Spans{coils(0, 1), coils(150, 1)} << Spans{} << Spans{coils(0, 151)};
    QTest::newRow("two tables") << Spans{holding(3, 1), coils(4, 1)} << Spans{} << Spans{holding(3, 1), coils(4, 1)};
    QTest::newRow("as long as may be") << Spans{holding(0, 100), holding(100, 25)} << Spans{} << Spans{holding(0, 125)};
    QTest::newRow("one too long") << Spans{holding(0, 100), holding(100, 26)} << Spans{}
                                  << Spans{holding(0, 100), holding(100, 26)};
    QTest::newRow("bits, one too many") << Spans{coils(0, 1000), coils(1000, 1001)} << Spans{}
                                        << Spans{coils(0, 1000), coils(1000, 1001)};
    // Joining from the left as far as it goes would read the gap of 9 and leave out the one of 1.
    QTest::newRow("best division") << Spans{holding(0, 100), holding(109, 10), holding(120, 10)} << Spans{}
                                   << Spans{holding(0, 100), holding(109, 21)};
    QTest::newRow("up to the last address")
        << Spans{holding(65535, 1), holding(65530, 1)} << Spans{} << Spans{holding(65530, 6)};
    QTest::newRow("hole") << Spans{holding(0, 2), holding(2, 2), holding(6, 2)} << Spans{holding(0, 8)}
                          << Spans{holding(0, 4), holding(6, 2)};
    QTest::newRow("read as objects") << Spans{holding(0, 2), holding(2, 2)} << Spans{holding(0, 4)}
                                     << Spans{holding(0, 2), holding(2, 2)};
    QTest::newRow("refused alone") << Spans{holding(0, 2), holding(2, 2), holding(4, 2)} << Spans{holding(2, 2)}
                                   << Spans{holding(0, 2), holding(2, 2), holding(4, 2)};
}

void ReadPlanTest::requestsAreTheCheapest()
{
    QFETCH(Spans, spans);
    QFETCH(Spans, refused);
    QFETCH(Spans, expected);

    const ReadPlan plan(spans, LineCost{20}, refused);
    QVERIFY2(plan.requests() == expected, qPrintable(QString::number(plan.requests().size())));
}

void ReadPlanTest::everySpanIsReadWholeByOneRequest()
{
    QRandomGenerator random(1);
    for (int run = 0; run < 2000; ++run) {
        Spans spans;
        for (int count = random.bounded(1, 9); count > 0; --count) {
            const bool isBit = random.bounded(4) == 0;
            RegisterSpan span = isBit ? coils(random.bounded(4000), random.bounded(1, 2001))
                                      : holding(random.bounded(400), random.bounded(1, 126));
            if (random.bounded(2) == 0) {
                span.count = static_cast<quint16>(random.bounded(1, 5));
            }
            spans.append(span);
        }
        Spans refused;
        for (int attempt = 0; attempt < 3; ++attempt) {
            const ReadPlan plan(spans, LineCost{40}, refused);
            for (int index = 0; index < spans.size(); ++index) {
                const RegisterSpan &request = plan.requests().at(plan.requestOf(index));
                QVERIFY(request.isReadable());
                QVERIFY(contains(request, spans.at(index)));
                QCOMPARE(plan.offsetOf(index), spans.at(index).address - request.address);
            }
            for (const RegisterSpan &request : plan.requests()) {
                const bool isJoined = !spans.contains(request);
                for (const RegisterSpan &hole : qAsConst(refused)) {
                    QVERIFY(!isJoined || !contains(request, hole));
                }
            }
            refused.append(plan.requests().first());
        }
    }
}

void ReadPlanTest::slowerLinesBridgeShorterGaps()
{
    const auto longestGap = [](const ConnectionSettings &settings) {
        int gap = 0;
        while (gap < 123 &&
               ReadPlan({holding(0, 1), holding(2 + gap, 1)}, LineCost::of(settings)).requests().size() == 1) {
            ++gap;
        }
        return gap;
    };
    QCOMPARE(longestGap(ConnectionSettings()), 123); // whatever fits in one request
    // At 19,200 baud 3 ms are 5.2 bytes of 11 bits; with 20 bytes of frames and silences that is more than 12 registers.
    QCOMPARE(longestGap(serial(19200)), 12);
    QVERIFY(longestGap(serial(115200)) > 12);
}

GUARDED_TEST_MAIN(ReadPlanTest)
#include "ReadPlanTest.moc"
