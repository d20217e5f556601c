#include "modules/modbus/ReadPlan.h"
#include "GuardedTest.h"
#include "modules/modbus/ConnectionSettings.h"

namespace
{

using SpanList = QVector<RegisterSpan>;

RegisterSpan holding(int address, int count)
{
    return {ModbusTable::HoldingRegister, static_cast<quint16>(address), static_cast<quint16>(count)};
}

RegisterSpan coils(int address, int count)
{
    return {ModbusTable::Coil, static_cast<quint16>(address), static_cast<quint16>(count)};
}

ConnectionSettings serialAt(int baud)
{
    ConnectionSettings settings;
    settings.medium = ConnectionSettings::Medium::Rtu;
    settings.baud = baud;
    return settings;
}

bool holds(const RegisterSpan &outer, const RegisterSpan &inner)
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
    void requestsAreTheCheapest_data()
    {
        // A request costs as much as 20 bytes.
        testRows<SpanList, SpanList, SpanList>(
            {"spans", "refused", "expected"},
            {{"touching", {holding(10, 2), holding(12, 2)}, {}, {holding(10, 4)}},
             {"the other way round", {holding(12, 2), holding(10, 2)}, {}, {holding(10, 4)}},
             {"the same twice", {holding(10, 2), holding(10, 2)}, {}, {holding(10, 2)}},
             {"one inside the other", {holding(10, 1), holding(8, 6)}, {}, {holding(8, 6)}},
             {"cheap gap", {holding(0, 1), holding(10, 1)}, {}, {holding(0, 11)}},
             {"dear gap", {holding(0, 1), holding(12, 1)}, {}, {holding(0, 1), holding(12, 1)}},
             {"gap of bits", {coils(0, 1), coils(150, 1)}, {}, {coils(0, 151)}},
             {"two tables", {holding(3, 1), coils(4, 1)}, {}, {holding(3, 1), coils(4, 1)}},
             {"as long as may be", {holding(0, 100), holding(100, 25)}, {}, {holding(0, 125)}},
             {"one too long", {holding(0, 100), holding(100, 26)}, {}, {holding(0, 100), holding(100, 26)}},
             {"bits, one too many", {coils(0, 1000), coils(1000, 1001)}, {}, {coils(0, 1000), coils(1000, 1001)}},
             // Joining greedily from the left would read the gap of 9 and leave out the one of 1.
             {"best division",
              {holding(0, 100), holding(109, 10), holding(120, 10)},
              {},
              {holding(0, 100), holding(109, 21)}},
             {"up to the last address", {holding(65535, 1), holding(65530, 1)}, {}, {holding(65530, 6)}},
             {"hole", {holding(0, 2), holding(2, 2), holding(6, 2)}, {holding(0, 8)}, {holding(0, 4), holding(6, 2)}},
             {"read as objects", {holding(0, 2), holding(2, 2)}, {holding(0, 4)}, {holding(0, 2), holding(2, 2)}},
             {"refused alone",
              {holding(0, 2), holding(2, 2), holding(4, 2)},
              {holding(2, 2)},
              {holding(0, 2), holding(2, 2), holding(4, 2)}}});
    }

    void requestsAreTheCheapest()
    {
        QFETCH(SpanList, spans);
        QFETCH(SpanList, refused);
        QFETCH(SpanList, expected);
        const ReadPlan plan(spans, LineCost{20}, refused);
        QVERIFY2(plan.requests() == expected, qPrintable(QString::number(plan.requests().size())));
    }

    void everySpanIsReadWholeByOneRequest()
    {
        QRandomGenerator random(1);
        for (int run = 0; run < 2000; ++run) {
            SpanList spans;
            for (int count = random.bounded(1, 9); count > 0; --count) {
                const bool isBit = random.bounded(4) == 0;
                RegisterSpan span = isBit ? coils(random.bounded(4000), random.bounded(1, 2001))
                                          : holding(random.bounded(400), random.bounded(1, 126));
                if (random.bounded(2) == 0) {
                    span.count = static_cast<quint16>(random.bounded(1, 5));
                }
                spans.append(span);
            }
            SpanList refused;
            for (int attempt = 0; attempt < 3; ++attempt) {
                const ReadPlan plan(spans, LineCost{40}, refused);
                for (int index = 0; index < spans.size(); ++index) {
                    const RegisterSpan &request = plan.requests().at(plan.requestOf(index));
                    QVERIFY(request.isReadable());
                    QVERIFY(holds(request, spans.at(index)));
                    QCOMPARE(plan.offsetOf(index), spans.at(index).address - request.address);
                }
                for (const RegisterSpan &request : plan.requests()) {
                    const bool isJoined = !spans.contains(request);
                    for (const RegisterSpan &hole : qAsConst(refused)) {
                        QVERIFY(!isJoined || !holds(request, hole));
                    }
                }
                refused.append(plan.requests().first());
            }
        }
    }

    void slowerLinesBridgeShorterGaps()
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
        // At 19,200 baud 3 ms are 5.2 bytes of 11 bits; with 20 bytes of frames and pauses that is over 12 registers.
        QCOMPARE(longestGap(serialAt(19200)), 12);
        QVERIFY(longestGap(serialAt(115200)) > 12);
    }
};

GUARDED_TEST(ReadPlanTest)
#include "ReadPlanTest.moc"
