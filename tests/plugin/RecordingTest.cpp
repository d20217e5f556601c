#include "GuardedTest.h"
#include "ScriptedCurve.h"
#include "XYPlotter.h"

#include <QCheckBox>
#include <QFileDialog>

#include <csignal>
#include <functional>

#include <sys/resource.h>

namespace
{

using Action = std::function<void(ScriptedCurve *)>;

QByteArray bytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
}

} // namespace

Q_DECLARE_METATYPE(Action)

/// Recording to a file: its bytes, and everything that starts, ends or disturbs it.
class RecordingTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void bytesOfARecording();
    void cancelledDialog();
    void fileThatIsRefused();
    void fullDisk();
    void whatEndsARecording_data();
    void whatEndsARecording();
    void destructionWhileTheDialogIsOpen();

private:
    XYPlotter m_root;
};

void RecordingTest::bytesOfARecording()
{
    ScriptedCurve recorder(&m_root);
    const QString path = temporaryPath(QStringLiteral("log.csv"));
    recorder.startLog(path);
    QCOMPARE(bytes(path), QByteArray("Module:;\r\nCounter;\r\n"));
    recorder.sample(5, 5); // the first point of a curve is never logged
    recorder.sample(5, 6);
    QCOMPARE(bytes(path), QByteArray("Module:;\r\nCounter;\r\n1;5;6;\r\n"));
    recorder.logBox()->click();
    recorder.sample(1, 1);
    QCOMPARE(bytes(path), QByteArray("Module:;\r\nCounter;\r\n1;5;6;\r\n"));

    recorder.chooseBoth(1);
    recorder.curveBox(1)->click();
    recorder.sample(0, 0);
    recorder.startLog(path); // begins the file and the numbers anew
    const QByteArray captions = "alias of S/m [Axis 0];alias of S/m [Axis 0];";
    const QByteArray header =
        "Module:;" + captions + captions + "\r\n" + "Counter;pos [raw];speed [raw];pos [raw];speed [raw];\r\n";
    recorder.sample(120, -40);
    recorder.sample(120, -40); // nothing new on any curve: no line
    recorder.chooseBoth(1);    // the same source again: goes on, but the curve starts anew
    recorder.sample(120, -38);
    recorder.module->channel.answer = [](const Command &request) {
        static int call = 0;
        return call++ < 2 ? int(request.type()) : 9; // curve 0 gets 1 and 2, curve 1 gets 9 and 9
    };
    recorder.sampleTick();
    recorder.module->channel.answer = [](const Command &) { return 9; };
    recorder.sampleTick(); // curve 1 repeats its last point
    QCOMPARE(bytes(path), header + "1;120;-40;120;-40;\r\n2;120;-38;\r\n3;1;2;9;9;\r\n4;9;9;;;\r\n");
    QCOMPARE(messages(QtDebugMsg).filter(QStringLiteral("new line: ")).constLast(),
             QStringLiteral("virtual void XYPlotter::timerEvent(QTimerEvent*) new line:  5 ; 9;9;;; \r\n"));
}

void RecordingTest::cancelledDialog()
{
    ScriptedCurve recorder(&m_root);
    QString proposed;
    recorder.clickLog([&](QFileDialog *dialog) {
        proposed = dialog->selectedFiles().value(0);
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Save"));
        QCOMPARE(dialog->nameFilters(), QStringList({"csv (*.csv)"}));
        recorder.sampleTick(); // goes on below the dialog, and writes nothing
        dialog->reject();
    });
    const QString pattern = QStringLiteral("^\\d{8}_\\d\\d\\.\\d\\d\\.\\d\\d_xyPlotter\\.csv$");
    QVERIFY(QRegularExpression(pattern).match(QFileInfo(proposed).fileName()).hasMatch());
    QCOMPARE(QFileInfo(proposed).absolutePath(), QDir::currentPath());
    QVERIFY(!recorder.logBox()->isChecked());
    QVERIFY(!QFile::exists(proposed));
}

void RecordingTest::fileThatIsRefused()
{
    ScriptedCurve recorder(&m_root);
    const QString missing = temporaryPath(QStringLiteral("no folder/log.csv"));
    recorder.startLog(missing);
    QVERIFY(recorder.logBox()->isChecked()); // stays, though nothing is recorded
    recorder.sample(1, 1);
    recorder.sample(2, 2);
    QVERIFY(!QFile::exists(missing));
    recorder.logBox()->click();

    const QString path = temporaryPath(QStringLiteral("log.csv"));
    recorder.startLog(path);
    recorder.sample(1, 1);
    QVERIFY(QFile::remove(path));
    QVERIFY(QDir().mkdir(path)); // in its place stands what cannot be written to
    recorder.sample(3, 3);       // lost, and not counted
    QVERIFY(QDir().rmdir(path));
    recorder.sample(4, 4);
    recorder.sample(5, 5);
    QCOMPARE(bytes(path), QByteArray("2;4;4;\r\n3;5;5;\r\n"));
    QVERIFY(recorder.logBox()->isChecked());
}

void RecordingTest::fullDisk()
{
    ScriptedCurve recorder(&m_root);
    const QString path = temporaryPath(QStringLiteral("log.csv"));
    recorder.startLog(path);
    recorder.sample(1, 1);
    recorder.sample(2, 2);
    const QByteArray before = bytes(path);

    // Room for half a line only: the kernel writes that much and refuses the rest, as on a full disk.
    const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &limit), 0);
    rlimit tight = limit;
    tight.rlim_cur = static_cast<rlim_t>(before.size() + 3);
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &tight), 0);
    recorder.sample(3, 3);
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &limit), 0);
    std::signal(SIGXFSZ, previousHandler);

    QCOMPARE(bytes(path), before);
    recorder.sample(4, 4);
    QCOMPARE(bytes(path), before + "3;4;4;\r\n");
}

void RecordingTest::whatEndsARecording_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<bool>("ends");

    QTest::newRow("another curve is recorded") << Action([](ScriptedCurve *r) { r->curveBox(2)->click(); }) << true;
    QTest::newRow("all data is shown") << Action([](ScriptedCurve *r) { r->showAllBox()->click(); }) << true;
    QTest::newRow("another source") << Action([](ScriptedCurve *r) { PluginHarness::clickCell(r->table(0, 'X'), 1); })
                                    << true;
    QTest::newRow("the same source again") << Action([](ScriptedCurve *r) { r->chooseBoth(); }) << false;
    QTest::newRow("another curve is selected") << Action([](ScriptedCurve *r) { r->radioButton(2)->click(); }) << false;
    QTest::newRow("a curve that is not recorded gets a source")
        << Action([](ScriptedCurve *r) { r->chooseBoth(3); }) << false;
    QTest::newRow("clear") << Action([](ScriptedCurve *r) { r->find<QAbstractButton>("btnResetData")->click(); })
                           << false;
}

void RecordingTest::whatEndsARecording()
{
    QFETCH(Action, action);
    ScriptedCurve recorder(&m_root);
    recorder.startLog(temporaryPath(QStringLiteral("log.csv")));
    recorder.sample(1, 1);
    action(&recorder);
    QTEST(!recorder.logBox()->isChecked(), "ends");
}

void RecordingTest::destructionWhileTheDialogIsOpen()
{
    ScriptedCurve recorder(&m_root);
    recorder.clickLog([&](QFileDialog *dialog) {
        delete recorder.window;
        QVERIFY(recorder.plugin.isNull());
        dialog->selectFile(temporaryPath(QStringLiteral("log.csv")));
        static_cast<QDialog *>(dialog)->done(QDialog::Accepted);
    });
    QVERIFY(!QFile::exists(temporaryPath(QStringLiteral("log.csv"))));
}

GUARDED_TEST_MAIN(RecordingTest)
#include "RecordingTest.moc"
