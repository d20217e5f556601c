#include "GuardedTest.h"
#include "ScriptedCurve.h"
#include "XYPlotter.h"

#include <QAbstractButton>
#include <QFileDialog>

#include <array>
#include <csignal>
#include <functional>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

using Action = std::function<void(ScriptedCurve *)>;

QByteArray bytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
}

/// Limits the size of files during its lifetime: more bytes are not written, as on a full disk.
class TightDisk
{
public:
    explicit TightDisk(int bytes) : m_previousHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_previous);
        rlimit tight = m_previous;
        tight.rlim_cur = static_cast<rlim_t>(bytes);
        setrlimit(RLIMIT_FSIZE, &tight);
    }
    ~TightDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_previous);
        std::signal(SIGXFSZ, m_previousHandler);
    }

private:
    Q_DISABLE_COPY(TightDisk)

    void (*const m_previousHandler)(int);
    rlimit m_previous{};
};

} // namespace

Q_DECLARE_METATYPE(Action)

/// Recording to a file: its bytes, what starts and ends it, and failures of the file.
class RecordingTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void bytesOfARecording()
    {
        ScriptedCurve recorder(&m_root);
        const QString path = temporaryPath("log.csv");
        recorder.startLog(path);
        QCOMPARE(bytes(path), QByteArray("Module:;\r\nCounter;\r\n"));
        recorder.sample(5, 5); // the first point of a curve is never logged
        recorder.sample(-2147483647 - 1, 2147483647);
        QCOMPARE(bytes(path), QByteArray("Module:;\r\nCounter;\r\n1;-2147483648;2147483647;\r\n"));
        recorder.logBox()->click();
        recorder.sample(1, 1);
        QCOMPARE(bytes(path), QByteArray("Module:;\r\nCounter;\r\n1;-2147483648;2147483647;\r\n"));

        recorder.chooseBoth(1);
        recorder.curveBox(1)->click();
        recorder.sample(0, 0);
        recorder.startLog(path); // replaces the file and counts from 1
        const QByteArray captions = "alias of S/m [Axis 0];alias of S/m [Axis 0];";
        const QByteArray header =
            "Module:;" + captions + captions + "\r\n" + "Counter;pos [raw];speed [raw];pos [raw];speed [raw];\r\n";
        recorder.sample(120, -40);
        recorder.sample(120, -40); // nothing new on any curve: no line
        recorder.chooseBoth(1);    // the same source again: recording continues, the curve is cleared
        recorder.sample(120, -38);
        int call = 0; // curve 0 gets 1 and 2, curve 1 gets 9 and 9
        recorder.module->channel.answer = [&call](const Command &request) { return call++ < 2 ? request.type() : 9; };
        recorder.sampleTick();
        recorder.sampleTick(); // curve 1 repeats its last point
        QCOMPARE(bytes(path), header + "1;120;-40;120;-40;\r\n2;120;-38;\r\n3;1;2;9;9;\r\n4;9;9;;;\r\n");
        QCOMPARE(messages(QtDebugMsg).filter(QStringLiteral("new line: ")).constLast(),
                 QStringLiteral("virtual void XYPlotter::timerEvent(QTimerEvent*) new line:  5 ; 9;9;;; \r\n"));
    }

    void cancelledDialog()
    {
        ScriptedCurve recorder(&m_root);
        QString proposed;
        recorder.clickLog([&](QFileDialog *dialog) {
            proposed = dialog->selectedFiles().value(0);
            QCOMPARE(dialog->nameFilters(), QStringList({"csv (*.csv)"}));
            recorder.sampleTick(); // sampling continues, and writes nothing
            dialog->reject();
        });
        static const QRegularExpression pattern(QStringLiteral("^\\d{8}_\\d\\d\\.\\d\\d\\.\\d\\d_xyPlotter\\.csv$"));
        QVERIFY(pattern.match(QFileInfo(proposed).fileName()).hasMatch());
        QCOMPARE(QFileInfo(proposed).absolutePath(), QDir::currentPath());
        QVERIFY(!recorder.logBox()->isChecked());
        QVERIFY(!QFile::exists(proposed));
    }

    void fileThatIsRefused()
    {
        ScriptedCurve recorder(&m_root);
        const QString missing = temporaryPath("no folder/log.csv");
        recorder.startLog(missing);
        QVERIFY(recorder.logBox()->isChecked()); // stays, though nothing is recorded
        recorder.sample(1, 1);
        recorder.sample(2, 2);
        QVERIFY(!QFile::exists(missing));
        recorder.logBox()->click();

        const QString path = temporaryPath("log.csv");
        recorder.startLog(path);
        recorder.sample(1, 1);
        QVERIFY(QFile::remove(path));
        QVERIFY(QDir().mkdir(path)); // cannot be opened for writing
        recorder.sample(3, 3);       // lost, and not counted
        QVERIFY(QDir().rmdir(path));
        recorder.sample(4, 4);
        recorder.sample(5, 5);
        QCOMPARE(bytes(path), QByteArray("2;4;4;\r\n3;5;5;\r\n"));
        QVERIFY(recorder.logBox()->isChecked());
    }

    void fullDisk() // for the header, later for a line
    {
        ScriptedCurve recorder(&m_root);
        recorder.sample(1, 1);
        const QString path = temporaryPath("log.csv");
        const QByteArray header =
            "Module:;alias of S/m [Axis 0];alias of S/m [Axis 0];\r\nCounter;pos [raw];speed [raw];\r\n";
        {
            const TightDisk disk(header.size() - 3);
            recorder.startLog(path);
            QCOMPARE(bytes(path), QByteArray());
            recorder.sample(2, 2); // nor is there room for the header now
            QCOMPARE(bytes(path), QByteArray());
        }
        recorder.sample(3, 3);
        const QByteArray before = header + "2;3;3;\r\n";
        QCOMPARE(bytes(path), before);
        {
            const TightDisk disk(before.size() + 3); // room for half a line
            recorder.sample(4, 4);
        }
        QCOMPARE(bytes(path), before);
        recorder.sample(5, 5);
        QCOMPARE(bytes(path), before + "4;5;5;\r\n");
    }

    void pipesAndDevices()
    {
        ScriptedCurve recorder(&m_root);
        const QString pipe = temporaryPath("pipe");
        QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
        alarm(10); // opening the FIFO would block
        recorder.startLog(pipe);
        recorder.sample(1, 1);
        recorder.sample(2, 2); // not recorded, as with any file that cannot be opened
        QVERIFY(messages(QtDebugMsg).filter("new line: ").isEmpty());
        recorder.logBox()->click();

        const int reader = ::open(qPrintable(pipe), O_RDONLY | O_NONBLOCK);
        recorder.startLog(pipe);
        recorder.sample(3, 3);
        std::array<char, 200> read = {};
        QVERIFY(::read(reader, read.data(), read.size()) > 0);
        QVERIFY(QByteArray(read.data()).endsWith("1;3;3;\r\n"));
        for (int value = 4; value < 10000; ++value) {
            recorder.sample(value, value); // more than the pipe holds
        }
        ::close(reader);
        recorder.sample(2, 2);
        recorder.logBox()->click();

        const QString path = temporaryPath("log.csv");
        recorder.startLog(path);
        QVERIFY(QFile::remove(path) && QFile::link(pipe, path));
        recorder.sample(3, 3); // lost
        QVERIFY(QFile::remove(path) && QFile::link(QStringLiteral("/dev/null"), path));
        recorder.sample(4, 4);
        QVERIFY(QFile::remove(path));
        recorder.sample(5, 5);
        QCOMPARE(bytes(path), QByteArray("2;5;5;\r\n"));
        alarm(0);
    }

    void whatEndsARecording_data()
    {
        QTest::addColumn<bool>("staysChecked");
        QTest::addColumn<bool>("goesOn");
        QTest::addColumn<Action>("action");
        const Action reopening = [](ScriptedCurve *it) {
            it->close();
            it->open();
        };
        QTest::newRow("closing and reopening") << true << false << reopening; // checked, although nothing is recorded
        const auto row = [](const char *name, bool ends, const Action &action) {
            QTest::newRow(name) << !ends << !ends << action;
        };
        row("another curve is recorded", true, [](ScriptedCurve *it) { it->curveBox(2)->click(); });
        row("all data is shown", true, [](ScriptedCurve *it) { it->button("Show all data")->click(); });
        row("another source", true, [](ScriptedCurve *it) { PluginHarness::clickCell(it->table(0, 'X'), 1); });
        row("a source that is shown but not recorded", true, [this](ScriptedCurve *it) {
            it->button("Show all data")->click();
            it->startLog(temporaryPath("log.csv"));
            QVERIFY(it->logBox()->isChecked());
            it->chooseBoth(3);
        });
        row("the same source again", false, [](ScriptedCurve *it) { it->chooseBoth(); });
        row("another curve is selected", false, [](ScriptedCurve *it) { it->radioButton(2)->click(); });
        row("a source that is not recorded", false, [](ScriptedCurve *it) { it->chooseBoth(3); });
        row("clear", false, [](ScriptedCurve *it) { it->find<QAbstractButton>("btnResetData")->click(); });
    }

    void whatEndsARecording()
    {
        QFETCH(Action, action);
        ScriptedCurve recorder(&m_root);
        const QString path = temporaryPath("log.csv");
        recorder.startLog(path);
        recorder.sample(1, 1);
        action(&recorder);
        QTEST(recorder.logBox()->isChecked(), "staysChecked");
        const QByteArray before = bytes(path);
        recorder.sample(2, 2);
        recorder.sample(3, 3);
        QTEST(bytes(path) != before, "goesOn");
    }

    void destructionWhileTheDialogIsOpen()
    {
        ScriptedCurve recorder(&m_root);
        recorder.clickLog([&](QFileDialog *dialog) {
            delete recorder.window;
            QVERIFY(recorder.plugin.isNull());
            dialog->selectFile(temporaryPath("log.csv"));
            static_cast<QDialog *>(dialog)->done(QDialog::Accepted);
        });
        QVERIFY(!QFile::exists(temporaryPath("log.csv")));
    }

    void destructionWhileTwoDialogsAreOpen()
    {
        ScriptedCurve recorder(&m_root);
        const QPointer<QAbstractButton> box = recorder.logBox();
        recorder.clickLog([&](QFileDialog *outer) {
            box->click(); // switches off
            recorder.clickLog([&](QFileDialog *inner) {
                delete recorder.window;
                static_cast<QDialog *>(inner)->done(QDialog::Rejected);
            });
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY2(!box.isNull(), "the first click has not returned yet");
            static_cast<QDialog *>(outer)->done(QDialog::Rejected);
        });
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(box.isNull());
    }

private:
    XYPlotter m_root;
};

GUARDED_TEST(RecordingTest)
#include "RecordingTest.moc"
