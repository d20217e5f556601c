#include "AxisCombo.h"
#include "ElapsedText.h"
#include "GuardedTest.h"
#include "LogText.h"

/// What needs no widget: bit fields, the rate label's text, the lines of a recording.
class DecodingTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void bitField_data();
    void bitField();
    void exchangeReadsAndWritesTheSourcesOwnRecords();
    void elapsedTime_data();
    void elapsedTime();
    void logLines();
};

void DecodingTest::bitField_data()
{
    QTest::addColumn<quint32>("answer");
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("width");
    QTest::addColumn<bool>("isSigned");
    QTest::addColumn<qint32>("value");

    QTest::newRow("byte, signed, all ones") << 0xFFU << 0 << 8 << true << -1;
    QTest::newRow("byte, unsigned") << 0xFFU << 0 << 8 << false << 255;
    QTest::newRow("byte, signed, least") << 0xFF80U << 0 << 8 << true << -128;
    QTest::newRow("nibble within, negative") << 0xF0U << 4 << 4 << true << -1;
    QTest::newRow("nibble within, positive") << 0xFF70U << 4 << 4 << true << 7;
    QTest::newRow("31 bit, signed") << 0x7FFFFFFFU << 0 << 31 << true << -1;
    QTest::newRow("31 bit, unsigned") << 0xFFFFFFFFU << 0 << 31 << false << 0x7FFFFFFF;
    QTest::newRow("whole, unsigned, top bit set") << 0x80000001U << 0 << 32 << false << -0x7FFFFFFF;
    QTest::newRow("whole, signed") << 0xFFFFFFFEU << 0 << 32 << true << -2;
    QTest::newRow("wider than whole") << 0xFFFFFFFEU << 0 << 200 << true << -2;
    QTest::newRow("top nibble, the answer's sign shifted in") << 0x90000000U << 28 << 4 << false << 9;
    QTest::newRow("whole after a shift keeps the sign") << 0x80000000U << 31 << 32 << false << -1;
    QTest::newRow("no width") << 0xFFFFFFFFU << 0 << 0 << false << 0;
    QTest::newRow("offset beyond the value: modulo 32") << 0xF0U << 36 << 4 << false << 15;
}

void DecodingTest::bitField()
{
    QFETCH(quint32, answer);
    QFETCH(int, offset);
    QFETCH(int, width);
    QFETCH(bool, isSigned);
    QFETCH(qint32, value);

    AxisCombo source(nullptr, 7);
    source.request.setCommand(148);
    source.setRequest(&source.request, static_cast<unsigned char>(offset), static_cast<unsigned char>(width), isSigned);
    source.reply.setValue(static_cast<qint32>(answer));
    QCOMPARE(source.value(), value);
    QCOMPARE(source.request.address(), static_cast<unsigned char>(7));
    QCOMPARE(source.request.command(), static_cast<unsigned char>(148));
}

void DecodingTest::exchangeReadsAndWritesTheSourcesOwnRecords()
{
    AxisCombo source(nullptr, 3);
    QCOMPARE(source.value(), 0);
    CommandCombo *const pair = source.exchange();
    QCOMPARE(pair->request.address(), static_cast<unsigned char>(3));
    pair->reply.setValue(-42);
    QCOMPARE(source.value(), -42); // whole and as it is before anything was chosen
}

void DecodingTest::elapsedTime_data()
{
    QTest::addColumn<qint64>("elapsedNs");
    QTest::addColumn<QString>("text");

    QTest::newRow("at the limit") << qint64(10'000'000) << QStringLiteral("10000 µs");
    QTest::newRow("just above") << qint64(10'000'001) << QStringLiteral("  10 ms");
    QTest::newRow("steps of 100") << qint64(2'345'678) << QStringLiteral(" 2300 µs");
    QTest::newRow("half a step is rounded up") << qint64(50'000) << QStringLiteral("  100 µs");
    QTest::newRow("ordinary") << qint64(14'400'000) << QStringLiteral("  14 ms");
}

void DecodingTest::elapsedTime()
{
    QFETCH(qint64, elapsedNs);
    QTEST(elapsedText(elapsedNs), "text");
}

void DecodingTest::logLines()
{
    QCOMPARE(LogText::header({}), QStringLiteral("Module:;\r\nCounter;\r\n"));
    QCOMPARE(LogText::header({{"M1", "M2", "pos", "speed"}, {"M3", "M4", "a", "b"}}),
             QStringLiteral("Module:;M1;M2;M3;M4;\r\nCounter;pos;speed;a;b;\r\n"));
    const QString fields = LogText::pointFields({-2147483648.0, 2147483647.0}) + LogText::repeatedPointFields();
    QCOMPARE(LogText::dataLine(12, fields), QStringLiteral("12;-2147483648;2147483647;;;\r\n"));
}

GUARDED_TEST_MAIN(DecodingTest)
#include "DecodingTest.moc"
