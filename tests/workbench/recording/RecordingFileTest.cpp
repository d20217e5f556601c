#include "modules/recording/RecordingFile.h"
#include "GuardedTest.h"

#include <sys/stat.h>

/// What is read of CSV files, good, odd and bad.
class RecordingFileTest : public GuardedTest
{
    Q_OBJECT

private slots:
    /// Columns as "group.number name suffix", rows as "step:values".
    void columnsAndRows_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("columns");
        QTest::addColumn<QString>("rows");
        QTest::addColumn<QString>("note");
        const QByteArray oneCurve = "Module:;M;M;\r\nCounter;pos [raw];speed;\r\n";
        const QByteArray twoCurves = "Module:;M1;M1;M2;M2;\r\nCounter;pos;speed;pos;speed;\r\n";
        const QString one = "0.0 pos [raw], 0.1 speed";
        const QString two = "0.0 pos, 0.1 speed, 1.0 pos, 1.1 speed";
        const auto log = [](const char *name, const QByteArray &bytes, const QString &columns, const QString &rows,
                            const QString &note = QString()) {
            QTest::newRow(name) << bytes << columns << rows << note;
        };
        log("log with repeated points", twoCurves + "1;120;-40;;;\r\n2;125;-38;131;7;\r\n3;;;132;7;\r\n", two,
            "0:120 -40 131 7, 1:125 -38 131 7, 2:125 -38 132 7");
        log("lost lines", oneCurve + "7;1;1;\r\n8;2;2;\r\n11;3;3;\r\n", one, "0:1 1, 1:2 2, 4:3 3");
        log("counters that are none", oneCurve + "5;1;1;\r\n2;2;2;\r\n99999999;3;3;\r\n", one, "0:1 1, 1:2 2, 2:3 3");
        log("a curve without fields", twoCurves + "1;1;2;3;4;\r\n2;5;6;\r\n3;7;8;9;10;\r\n", two,
            "0:1 2 3 4, 2:7 8 9 10", "left out: 1. The first is line 4: expected 6 fields, found 4");
        log("a header without curves", "Module:;\r\nCounter;\r\n1;5;6;\r\n", "0.0 X, 0.1 Y", "0:5 6", "names 0 curves");
        log("a header with too many", twoCurves + "1;1;2;\r\n2;3;4;\r\n", "0.0 pos, 0.1 speed", "0:1 2, 1:3 4",
            "names 2 curves");
        log("cut off", oneCurve + "1;1;2;\r\n2;3;4", one, "0:1 2", "Line 4, the last one");
        log("cut off behind a field", oneCurve + "1;1;2;\r\n2;3;", one, "0:1 2", "Line 4, the last one");
        log("cut off behind its fields", oneCurve + "1;1;2;\r\n2;3;4;", one, "0:1 2, 1:3 4");
        log("glued lines", oneCurve + "1;1;2;\r\n2;3;43;5;6;\r\n4;7-8;8;\r\n5;9;9;\r\n", one, "0:1 2, 4:9 9",
            "left out: 2");
        log("feeds only", "Module:;M;M;\nCounter;pos [raw];speed;\n1;1;2;\n\n2;3;4;\n", one, "0:1 2, 1:3 4");
        log("the same name twice", "Module:;A;B;\r\nCounter;pos [raw];pos [raw];\r\n1;1;2;\r\n",
            "0.0 pos (X) [raw], 0.1 pos (Y) [raw]", "0:1 2");
        log("limits", oneCurve + "1;-2147483648;2147483647;\r\n", one, "0:-2147483648 2147483647");
        log("saved by a spreadsheet", "Module:,M,M\nCounter,pos [raw],speed\n1,1,2\n2,,\n3,4,5\n", one,
            "0:1 2, 1:1 2, 2:4 5");

        log("commas", "t,Position [mm]\n0,1.5\n1,-2.25\n", "0.0 t, 0.1 Position [0.01 mm]", "0:0 150, 1:1 -225");
        log("semicolons and decimal commas", "\xEF\xBB\xBFt, s;\xC3\xA4\r\n0,5;1\r\n1,0;2\r\n",
            QString::fromUtf8("0.0 t, s [0.1], 0.1 \xC3\xA4"), "0:5 1, 1:10 2");
        log("tabs and blanks", "a\tb c\n 1 \t2.5\n", "0.0 a, 0.1 b c [0.1]", "0:1 25");
        log("Latin-1", "\xE4;b\n1;2\n", QString::fromUtf8("0.0 \xC3\xA4, 0.1 b"), "0:1 2");
        log("quotes", "\"a, b\",\"say \"\"c\"\"\"\n\"1\",\"2.5\"\n", "0.0 a, b, 0.1 say \"c\" [0.1]", "0:1 25");
        log("missing numbers", "a,b,c\n,NaN,1\n2,,\n,7\n", "0.0 a, 0.1 b, 0.2 c", "0:2 7 1, 1:2 7 1, 2:2 7 1");
        log("blank lines and separators", "a;b;\r\n1;2;\r\n\r\n3;4;;\r\n\r\n", "0.0 a, 0.1 b", "0:1 2, 1:3 4");
        log("a single column", "Value\n1,5\n2", "0.0 Value [0.1]", "0:15, 1:20");
        log("exponents", "a,b\n1.5e3,2E-2\n-1e+1,1\n", "0.0 a, 0.1 b [0.01]", "0:1500 2, 1:-10 100");
        log("zeros behind the mark", "a\n1.500000\n2.000000\n", "0.0 a [0.1]", "0:15, 1:20");
        log("more decimals than fit", "a\n0.30000000000000004\n-2.5\n", "0.0 a [0.00000001]",
            "0:30000000, 1:-250000000");
        log("large numbers", "a,b\n3000000000,-2147483649\n15,25\n", "0.0 a [1e1], 0.1 b [1e1]",
            "0:300000000 -214748365, 1:2 3");
        log("tiny numbers", "a\n1.5e-12\n", "0.0 a [1e-13]", "0:15");
        log("text", "time;state;v\n12:00;on;1\n12:01;off;2\n", "0.0 v", "0:1, 1:2",
            "left out: 1 (\"time\"), 2 (\"state\").");
        log("names", "a,,a\n1,2,3\n", "0.0 a, 0.1 column 2, 0.2 a column 3", "0:1 2 3");
        log("exported", "M [Axis 0];M [Axis 0]\r\npos;speed\r\n1,23457e+06;2\r\n;3\r\n", "0.0 pos, 0.1 speed",
            "0:1234570 2, 1:1234570 3");
    }

    void columnsAndRows()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, note);
        const auto file = opened(bytes);
        if (file == nullptr) {
            return;
        }
        QStringList columns;
        for (const RecordedColumn &column : file->columns()) {
            columns.append(
                QString("%1.%2 %3 %4").arg(column.group).arg(column.number).arg(column.name, column.suffix()));
            columns.last() = columns.last().trimmed();
        }
        QTEST(columns.join(", "), "columns");
        QStringList rows;
        for (int row = 0; row < file->rowCount(); ++row) {
            QStringList values;
            for (int column = 0; column < file->columns().size(); ++column) {
                values.append(QString::number(file->value(row, column)));
            }
            rows.append(QString::number(file->stepOf(row)) + ':' + values.join(' '));
            QCOMPARE(file->rowAt(file->stepOf(row)), row);
        }
        QTEST(rows.join(", "), "rows");
        QCOMPARE(file->lastStep(), file->stepOf(file->rowCount() - 1));
        const QString notes = file->notes().join('\n');
        QVERIFY2(note.isEmpty() ? notes.isEmpty() : notes.contains(note), qPrintable(notes));
        QCOMPARE(file->trouble() + file->change(), QString());
    }

    void badFiles_data()
    {
        testRows<QByteArray, QString>(
            {"bytes", "expected"},
            {{"empty", "", "line 1: expected a header line with the names of the columns, found an empty file"},
             {"blank", "\r\n\r\n", "line 1: expected a header line"},
             {"no header", "1;2\n3;4\n",
              "line 1, column 1: expected a header line with the names of the columns, found"},
             {"only a header", "a;b\n", "line 2: expected lines with numbers, found the end of the file"},
             {"a log without names", "Module:;M;M;\r\n1;2;3;\r\n",
              "line 2, column 1: expected \"Counter\", found \"1\""},
             {"a log without lines", "Module:;M;M;\r\nCounter;a;b;\r\n",
              "line 3: expected lines with a counter and two"},
             {"a log with one line, cut off", "Module:;M;M;\r\nCounter;a;b;\r\n1;2;3", "line 3: expected lines with"},
             {"a log that is none", "Module:;M;M;\r\nCounter;a;b;\r\n1;x;y;\r\n",
              "line 3, column 2: expected a number, found \"x\""},
             {"text only", "name,state\nA,on\n", "line 2, column 1: expected a number, found \"A\""},
             {"text and empty fields", "name,state\nA,\nB,\n", "line 2, column 1: expected a number, found \"A\""},
             {"text that turns into numbers", "a\nx\ny\n1\n", "line 2, column 1: expected a number"},
             {"text below numbers", "a,b\n1,2\n\n3,off\n", "line 4, column 2: expected a number, found \"off\""},
             {"half a number", "a;b\n1;2\n3;4e\n", "line 3, column 2: expected a number, found \"4e\""},
             {"a number without end", "a\n1\n1e999\n", "line 3, column 1: expected a number, found \"1e999\""},
             {"too many fields", "a,b\n1,2,3\n", "line 2, column 3: expected no more than 2 columns, found \"3\""},
             {"grouped digits", "a;b\n1;1.234,5\n", "line 2, column 2: expected a number"},
             {"two decimal marks", "a;b\n0,5;1\n1;1.234\n", "line 3, column 2: expected the decimal mark of the lines"},
             {"an open quote", "a,b\n1,\"2\n3,4\n", "line 2, column 2: expected a closing quote, found \"2\""},
             {"a long line", "a,b\n1,2\n3," + QByteArray(70000, '4') + "\n", "line 3: expected at most 65536 bytes"},
             {"a long first line", QByteArray(2000000, 'a'), "line 1: expected a header line"},
             {"a binary file",
              QByteArray("\x7F"
                         "ELF\0\0",
                         6),
              "line 1: expected text, found a zero byte"},
             {"zero bytes further on", "a,b\n" + QByteArray("1,2\n").repeated(400000) + QByteArray("3,\0\n", 4),
              "line 400002: expected text, found a zero byte"},
             {"UTF-16",
              QByteArray("\xFF\xFE"
                         "a\0",
                         4),
              "line 1, column 1: expected text in UTF-8"}});
    }

    void badFiles()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, expected);
        const QString path = written("run.csv", bytes);
        const auto result = RecordingFile::open(path);
        QVERIFY(result.file == nullptr);
        QVERIFY2(result.error.startsWith(path + ": " + expected), qPrintable(result.error));
        QVERIFY2(!result.error.contains('\n') && result.error.size() < 300, qPrintable(result.error));
    }

    void notFiles()
    {
        const QString pipe = temporaryPath("pipe");
        QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
        QVERIFY(RecordingFile::open(pipe).error.contains("found a device or a pipe")); // and does not wait
        QVERIFY(RecordingFile::open(temporaryPath(".")).error.contains("found a folder"));
        QVERIFY(RecordingFile::open(temporaryPath("none")).error.contains("there is no such file"));
        QFile large(written("run.csv", "a,b\n1,2\n"));
        QVERIFY(large.resize(RecordingFile::maximumBytes + 1)); // takes no place on the disk
        QVERIFY(RecordingFile::open(large.fileName()).error.contains("expected at most 1024 MiB"));
    }

    void asManyColumnsAsRequestsCanName()
    {
        QByteArray names;
        QByteArray numbers;
        for (int column = 0; column < 300; ++column) {
            names += 'c' + QByteArray::number(column) + ',';
            numbers += QByteArray::number(column) + ',';
        }
        const auto file = opened(names + '\n' + numbers + '\n');
        QCOMPARE(file->columns().size(), 256);
        QCOMPARE(file->value(0, 255), 255);
        QVERIFY(file->notes().join(' ').contains("44 are left out"));
    }

    void openingKeepsNoRows()
    {
        constexpr int rows = 1000000;
        QByteArray bytes = "Module:;M;M;M;M;\r\nCounter;a;b;c;d;\r\n";
        for (int row = 0; row < rows; ++row) {
            // The third and fourth are there only once in a while, and else those of the row before.
            bytes += QByteArray::number(row + 1) + ';' + QByteArray::number(row) + ';' + QByteArray::number(-row) +
                     (row % 50000 == 7 ? ';' + QByteArray::number(row) + ";1;\r\n" : QByteArray(";;;\r\n"));
        }
        const auto file = opened(bytes);
        QCOMPARE(file->rowCount(), rows);
        QCOMPARE(file->decodedRows(), 0);
        QVERIFY2(file->indexBytes() < 50000, qPrintable(QString::number(file->indexBytes())));
        for (const int row : {999999, 0, 500006, 500007, 49999}) {
            QCOMPARE(file->value(row, 0), row);
            QCOMPARE(file->value(row, 1), -row);
            QCOMPARE(file->value(row, 2), row < 7 ? 7 : row - (row - 7) % 50000);
            QCOMPARE(file->rowAt(row), row);
        }
        QVERIFY(file->decodedRows() < 20000);
    }

    /// The last numbers stay, and the file says what happened.
    void fileIsChangedWhileItIsOpen_data()
    {
        testRows<QString, QString, int>({"change", "trouble", "lastValue"},
                                        {{"cut off", "was cut off", "has become shorter", 0},
                                         {"emptied", "was cut off", "has become shorter", 0},
                                         {"removed", "was removed", "", 19999},
                                         {"replaced", "", "", 19999},
                                         {"continued", "has grown", "", 19999},
                                         {"written over", "was written to", "has changed", 0}});
    }

    void fileIsChangedWhileItIsOpen()
    {
        QFETCH(QString, change);
        QFETCH(QString, trouble);
        QByteArray bytes = "a,b\n";
        for (int row = 0; row < 20000; ++row) {
            bytes += QByteArray::number(row) + ",1\n";
        }
        const auto file = opened(bytes);
        QCOMPARE(file->value(0, 0), 0);
        const QByteArray how = QTest::currentDataTag();
        QFile other(file->path());
        if (how == "cut off" || how == "emptied") {
            QVERIFY(QFile::resize(file->path(), how == "emptied" ? 0 : bytes.size() - 3));
        } else if (how == "removed" || how == "replaced") {
            QVERIFY(other.remove());
        } else {
            QVERIFY(other.open(how == "continued" ? QIODevice::Append : QIODevice::ReadWrite));
            other.write(how == "continued" ? QByteArray("5,5\n") : QByteArray(bytes.size(), '\n'));
            other.setFileTime(QDateTime::currentDateTime().addSecs(5), QFileDevice::FileModificationTime);
            other.close();
        }
        if (how == "replaced") {
            written("run.csv", bytes);
            QFile later(file->path());
            QVERIFY(later.open(QIODevice::ReadWrite));
        }
        QTEST(file->value(19999, 0), "lastValue");
        const QString reported = file->change();
        QVERIFY2(reported.contains(change), qPrintable(reported));
        QVERIFY2(trouble.isEmpty() ? file->trouble().isEmpty() : file->trouble().contains(trouble),
                 qPrintable(file->trouble()));
        QCOMPARE(file->value(0, 0), 0);
    }

private:
    std::unique_ptr<RecordingFile> opened(const QByteArray &bytes) const
    {
        auto result = RecordingFile::open(written("run.csv", bytes));
        if (result.file == nullptr) {
            QTest::qFail(qPrintable(result.error), __FILE__, __LINE__);
        }
        return std::move(result.file);
    }
};

GUARDED_TEST(RecordingFileTest)
#include "RecordingFileTest.moc"
