#include "GuardedTest.h"
#include "PluginHarness.h"
#include "ScriptedModule.h"
#include "XYPlotter.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QTimer>

#include <functional>

namespace
{

class Recorder : public PluginHarness
{
public:
    explicit Recorder(ContainerInterface *root) : PluginHarness(root)
    {
        auto *const module = new ScriptedModule(QStringLiteral("S/m"), 1);
        module->addParameter("axis0", "par::x", 1, "pos");
        module->addParameter("axis0", "par::y", 2, "speed");
        module->channel.answer = [this](const Command &request) { return request.type() == 1 ? x : y; };
        handler.addModulePlugin(module);
        open();
        chooseBoth(0);
    }

    void chooseBoth(int curve)
    {
        QVERIFY(choose(curve, 'X', QStringLiteral("S/m"), QString(), QStringLiteral("pos")));
        QVERIFY(choose(curve, 'Y', QStringLiteral("S/m"), QString(), QStringLiteral("speed")));
    }

    void sample(qint32 newX, qint32 newY)
    {
        x = newX;
        y = newY;
        sampleTick();
    }

    QCheckBox *logBox() const
    {
        return find<QCheckBox>("cbLog");
    }

    /// Clicks the log box and does \a answer with the dialog that it opens.
    void clickLog(const std::function<void(QFileDialog *)> &answer)
    {
        int opened = 0;
        QTimer::singleShot(0, [&] {
            auto *const dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            QVERIFY(dialog != nullptr);
            ++opened;
            answer(dialog);
        });
        logBox()->click();
        QCOMPARE(opened, 1);
    }

    void startLog(const QString &path)
    {
        clickLog([&](QFileDialog *dialog) {
            dialog->setOption(QFileDialog::DontConfirmOverwrite);
            dialog->selectFile(path);
            static_cast<QDialog *>(dialog)->done(QDialog::Accepted);
        });
    }

    qint32 x = 0;
    qint32 y = 0;
};

QByteArray bytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
}

const QByteArray caption = "alias of S/m [Axis 0];alias of S/m [Axis 0];";

} // namespace

Q_DECLARE_METATYPE(std::function<void(Recorder *)>)

/// Recording to a file: its bytes, and everything that starts, ends or disturbs it.
class RecordingTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void bytesOfARecording();
    void firstPointIsNotLogged();
    void cancelledDialog();
    void fileThatCannotBeMade();
    void fileThatVanishesOrIsRefused();
    void whatEndsARecording_data();
    void whatEndsARecording();
    void destructionWhileTheDialogIsOpen();

private:
    XYPlotter m_root;
};

void RecordingTest::bytesOfARecording()
{
    Recorder recorder(&m_root);
    recorder.chooseBoth(1);
    recorder.curveBox(1)->click();
    recorder.sample(0, 0);
    const QString path = temporaryPath(QStringLiteral("log.csv"));
    recorder.startLog(path);
    const QByteArray header =
        "Module:;" + caption + caption + "\r\nCounter;pos [raw];speed [raw];pos [raw];speed [raw];\r\n";
    QCOMPARE(bytes(path), header);
    recorder.sample(120, -40);
    recorder.sample(120, -40); // nothing new on any curve: no line
    recorder.chooseBoth(1);    // the same source again: goes on, the curve starts anew
    recorder.sample(125, -38); // curve 1's first point: nothing of it in the line
    recorder.sample(126, -38);
    const QByteArray lines = "1;120;-40;120;-40;\r\n2;125;-38;\r\n3;126;-38;126;-38;\r\n";
    QCOMPARE(bytes(path), header + lines); // each line is in the file as soon as it is sampled
    QCOMPARE(messages(QtDebugMsg).filter(QStringLiteral("new line: ")).constFirst(),
             QStringLiteral("virtual void XYPlotter::timerEvent(QTimerEvent*) new line:  2 ; 120;-40;120;-40; \r\n"));

    recorder.logBox()->click();
    recorder.sample(1, 1);
    QCOMPARE(bytes(path), header + lines);
    recorder.startLog(path); // a new recording begins the file and the numbers anew
    recorder.sample(2, 2);
    QCOMPARE(bytes(path), header + "1;2;2;2;2;\r\n");
}

void RecordingTest::firstPointIsNotLogged()
{
    Recorder recorder(&m_root);
    const QString path = temporaryPath(QStringLiteral("log.csv"));
    recorder.startLog(path);
    QCOMPARE(bytes(path), QByteArray("Module:;\r\nCounter;\r\n"));
    recorder.sample(5, 5);
    QCOMPARE(bytes(path), QByteArray("Module:;\r\nCounter;\r\n"));
    recorder.sample(5, 6);
    QCOMPARE(bytes(path), QByteArray("Module:;\r\nCounter;\r\n1;5;6;\r\n"));
}

void RecordingTest::cancelledDialog()
{
    Recorder recorder(&m_root);
    QString proposed;
    recorder.clickLog([&](QFileDialog *dialog) {
        proposed = dialog->selectedFiles().value(0);
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Save"));
        QCOMPARE(dialog->nameFilters(), QStringList({"csv (*.csv)"}));
        recorder.sampleTick(); // goes on below the dialog, and writes nothing
        dialog->reject();
    });
    QVERIFY(QRegularExpression(QStringLiteral("^%1/\\d{8}_\\d\\d\\.\\d\\d\\.\\d\\d_xyPlotter\\.csv$")
                                   .arg(QRegularExpression::escape(QDir::currentPath())))
                .match(proposed)
                .hasMatch());
    QVERIFY(!recorder.logBox()->isChecked());
    QVERIFY(!QFile::exists(proposed));
}

void RecordingTest::fileThatCannotBeMade()
{
    Recorder recorder(&m_root);
    const QString path = temporaryPath(QStringLiteral("no folder/log.csv"));
    recorder.startLog(path);
    QVERIFY(recorder.logBox()->isChecked()); // stays, though nothing is recorded
    recorder.sample(1, 1);
    recorder.sample(2, 2);
    QVERIFY(!QFile::exists(path));
    recorder.logBox()->click();
    QVERIFY(!recorder.logBox()->isChecked());
}

void RecordingTest::fileThatVanishesOrIsRefused()
{
    Recorder recorder(&m_root);
    const QString path = temporaryPath(QStringLiteral("log.csv"));
    recorder.startLog(path);
    recorder.sample(1, 1);
    recorder.sample(2, 2);
    QVERIFY(QFile::remove(path));
    QVERIFY(QDir().mkdir(path)); // in its place stands what cannot be written to
    recorder.sample(3, 3);       // lost, and not counted
    QVERIFY(QDir().rmdir(path));
    recorder.sample(4, 4);
    recorder.sample(5, 5);
    QCOMPARE(bytes(path), QByteArray("2;4;4;\r\n3;5;5;\r\n"));
    QVERIFY(recorder.logBox()->isChecked());
}

void RecordingTest::whatEndsARecording_data()
{
    QTest::addColumn<std::function<void(Recorder *)>>("action");
    QTest::addColumn<bool>("ends");

    using Action = std::function<void(Recorder *)>;
    const auto click = [](int row) {
        return [row](Recorder *recorder) { PluginHarness::clickCell(recorder->table(0, 'X'), row); };
    };
    QTest::newRow("another curve is recorded") << Action([](Recorder *r) { r->curveBox(2)->click(); }) << true;
    QTest::newRow("all data is shown") << Action([](Recorder *r) {
        for (QCheckBox *const box : r->plot()->findChildren<QCheckBox *>()) {
            if (box->toolTip() == QStringLiteral("Show all data")) {
                box->click();
            }
        }
    }) << true;
    QTest::newRow("another source") << Action(click(1)) << true;
    QTest::newRow("the same source again") << Action(click(0)) << false;
    QTest::newRow("another curve is selected") << Action([](Recorder *r) { r->radioButton(2)->click(); }) << false;
    QTest::newRow("a source of a curve that is not recorded") << Action([](Recorder *r) { r->chooseBoth(3); }) << false;
    QTest::newRow("clear") << Action([](Recorder *r) { QTest::mouseClick(r->find("btnResetData"), Qt::LeftButton); })
                           << false;
}

void RecordingTest::whatEndsARecording()
{
    QFETCH(std::function<void(Recorder *)>, action);
    Recorder recorder(&m_root);
    recorder.startLog(temporaryPath(QStringLiteral("log.csv")));
    recorder.sample(1, 1);
    action(&recorder);
    QTEST(!recorder.logBox()->isChecked(), "ends");
}

void RecordingTest::destructionWhileTheDialogIsOpen()
{
    Recorder recorder(&m_root);
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
