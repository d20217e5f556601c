#include "logging/LogFollower.h"
#include "GuardedTest.h"

namespace
{

const char header[] = "Module:;A;A;\r\nCounter;x;y;\r\n";

} // namespace

/// What is found out about a log that a container writes.
class LogFollowerTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void linesAreCountedWhenTheyAreWhole()
    {
        LogFollower follower(temporaryPath("run.csv"));
        follower.poll();
        QVERIFY(!follower.isThere() && follower.isRegular() && !follower.wasReplaced());
        append(header);
        follower.poll();
        QVERIFY(follower.isThere() && follower.hasHeader() && !follower.lastLineTime().isValid());
        QCOMPARE(follower.dataLines(), 0);
        append("1;2;3;\r\n2;");
        follower.poll();
        QCOMPARE(follower.dataLines(), 1);
        const QDateTime first = follower.lastLineTime();
        QVERIFY(qAbs(first.msecsTo(QDateTime::currentDateTime())) < 10000);
        append(QByteArray("4;5;\r\n") + "3;6;7;\r\n");
        follower.poll();
        QCOMPARE(follower.dataLines(), 3);
        QCOMPARE(follower.bytes(), QFileInfo(follower.path()).size());
        const QDateTime last = follower.lastLineTime();
        follower.poll();
        QCOMPARE(follower.lastLineTime(), last); // no line came
        QVERIFY(!follower.wasReplaced());
    }

    void anotherFileOfTheSameNameIsNoticed_data()
    {
        QTest::addColumn<QByteArray>("content"); // null: there is none
        QTest::addColumn<int>("lines");
        QTest::addColumn<bool>("hasHeader");
        const QByteArray line = "1;2;3;\r\n";
        QTest::newRow("removed") << QByteArray() << 0 << false;
        QTest::newRow("emptied") << QByteArray("") << 0 << false;
        QTest::newRow("cut") << QByteArray(header) + line.repeated(35) << 35 << true;
        QTest::newRow("written anew by the next lines") << line + line << 2 << false;
        QTest::newRow("another log, longer") << "Module:;B;B;\r\nCounter;x;y;\r\n" + line.repeated(50) << 50 << true;
    }

    void anotherFileOfTheSameNameIsNoticed()
    {
        QFETCH(QByteArray, content);
        append(QByteArray(header) + QByteArray("1;2;3;\r\n").repeated(40));
        LogFollower follower(temporaryPath("run.csv"));
        follower.poll();
        QCOMPARE(follower.dataLines(), 40);
        QVERIFY(QFile::remove(follower.path()));
        if (!content.isNull()) {
            append(content);
        }
        follower.poll();
        QVERIFY(follower.wasReplaced());
        QCOMPARE(follower.isThere(), !content.isNull());
        QTEST(follower.dataLines(), "lines");
        QTEST(follower.hasHeader(), "hasHeader");
    }

private:
    void append(const QByteArray &bytes) const
    {
        QFile file(temporaryPath("run.csv"));
        QVERIFY(file.open(QIODevice::Append));
        QCOMPARE(file.write(bytes), qint64(bytes.size()));
    }
};

GUARDED_TEST_MAIN(LogFollowerTest)
#include "LogFollowerTest.moc"
