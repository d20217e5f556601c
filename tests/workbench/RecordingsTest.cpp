#include "Recordings.h"
#include "GuardedTest.h"
#include "MainWindow.h"
#include "MouseClick.h"
#include "SceneReader.h"
#include "SceneRunner.h"
#include "Workbench.h"

#include "host/ContainerInterface.h"

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QSettings>

#include <algorithm>
#include <functional>
#include <memory>

/// What is found out about the recordings of the real plugin, which tells nothing of them itself.
class RecordingsTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void initTestCase();
    void linesAreCountedUntilTheBoxIsUnchecked();
    void nothingIsRecorded_data();
    void nothingIsRecorded();
    void fileVanishesAndComesBack();
    void anotherFileOfTheSameNameIsRecognised();
    void announcedLinesThatNeverArriveAreTold();
    void reopenedWindowNoLongerRecords();

private:
    QString logPath() const;

    const QTemporaryDir m_toolkitSettings;
};

namespace
{

using State = RecordingWatch::State;

/// Types a name into the dialog and confirms it.
std::function<void(QFileDialog *)> saveAs(const QString &path)
{
    return [path](QFileDialog *dialog) {
        dialog->selectFile(path);
        static_cast<QDialog *>(dialog)->accept();
    };
}

QList<QByteArray> linesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QList<QByteArray>();
}

/// A plot with a growing curve in the main window.
class GrowingPlot
{
public:
    bool open()
    {
        const Scene scene = readSceneFile(shippedScenePath(QStringLiteral("circle"))).scene;
        if (!m_workbench.loadPlugin(QStringLiteral(PLUGIN)).isEmpty() ||
            !m_workbench.modules().add(scene.modules.constFirst(), 1)) {
            return false;
        }
        window = std::make_unique<MainWindow>(&m_workbench);
        window->show();
        container = window->addContainer();
        window->openContainer(container);
        watch = window->recordings()->watch(container);
        const auto hasFirstPoint = [this] { return m_workbench.modules().answeredRequests() > 2; };
        return SceneRunner(container).apply(scene).isEmpty() && QTest::qWaitFor(hasFirstPoint);
    }

    /// Clicks the box and has the dialog answered while it is open.
    void switchOn(const std::function<void(QFileDialog *)> &answer) const
    {
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
            if (auto *const dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget())) {
                poll.stop();
                answer(dialog);
            }
        });
        poll.start(0);
        MouseClick::on(watch->box()); // returns when the dialog is closed
    }

    bool record(const QString &path) const
    {
        switchOn(saveAs(path));
        return watch->state() == State::Recording && watch->path() == path;
    }

    void look() const
    {
        window->recordings()->look();
    }

    bool hasLabel(const QString &text) const
    {
        const QList<QLabel *> labels = window->findChildren<QLabel *>();
        return std::any_of(labels.cbegin(), labels.cend(), [&](const QLabel *label) { return label->text() == text; });
    }

private:
    Workbench m_workbench{SimulationClock::Drive::Exchanges, 14};

public:
    std::unique_ptr<MainWindow> window;
    ContainerInterface *container = nullptr;
    RecordingWatch *watch = nullptr;
};

} // namespace

QString RecordingsTest::logPath() const
{
    QDir().mkpath(temporaryPath(QStringLiteral("logs")));
    return temporaryPath(QStringLiteral("logs/run.csv"));
}

void RecordingsTest::initTestCase()
{
    // The file dialog keeps its folders in a file of the user's.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_toolkitSettings.path());
}

void RecordingsTest::linesAreCountedUntilTheBoxIsUnchecked()
{
    GrowingPlot plot;
    QVERIFY(plot.open());
    const QString path = logPath();
    QVERIFY(plot.record(path));
    QCOMPARE(plot.watch->headline(), QStringLiteral("Recording into run.csv, 0 lines"));
    QTRY_VERIFY(linesOf(path).size() > 6);
    plot.look();
    QCOMPARE(plot.watch->problem(), QString());
    QVERIFY(plot.watch->lastLineTime().isValid());
    QVERIFY(plot.hasLabel(QStringLiteral("Recording into run.csv, %1 lines").arg(plot.watch->dataLines())));

    MouseClick::on(plot.watch->box());
    QCOMPARE(plot.watch->headline(), QStringLiteral("Not recording"));
    QCOMPARE(plot.watch->path(), path);
    const QList<QByteArray> lines = linesOf(path); // two of header, and an empty one behind the last line end
    QCOMPARE(plot.watch->dataLines(), lines.size() - 3);
    QVERIFY(lines.at(lines.size() - 2).startsWith(QByteArray::number(plot.watch->dataLines()) + ';'));
    QCOMPARE(plot.watch->bytes(), QFileInfo(path).size());
    QCOMPARE(plot.watch->lastFailure(), QString());
}

void RecordingsTest::nothingIsRecorded_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("staysChecked");
    QTest::addColumn<QString>("headline");

    QTest::newRow("dialog cancelled") << QString() << false << QStringLiteral("Not recording");
    QTest::newRow("no such folder") << QStringLiteral("absent/run.csv") << true
                                    << QStringLiteral(
                                           "The box is checked, but nothing is being recorded: run.csv could "
                                           "not be opened: there is no such folder");
}

void RecordingsTest::nothingIsRecorded()
{
    QFETCH(QString, path);
    QFETCH(bool, staysChecked);
    QFETCH(QString, headline);
    GrowingPlot plot;
    QVERIFY(plot.open());
    QCOMPARE(plot.watch->headline(), QStringLiteral("Not recording"));
    const QSignalSpy failures(plot.window->recordings(), &Recordings::failed);
    if (path.isEmpty()) {
        plot.switchOn([](QFileDialog *dialog) { dialog->reject(); });
    } else {
        plot.switchOn(saveAs(temporaryPath(path)));
    }
    QCOMPARE(plot.watch->box()->isChecked(), staysChecked);
    QVERIFY(plot.watch->state() == (staysChecked ? State::CheckedOnly : State::Off));
    QCOMPARE(plot.watch->headline(), headline);
    QVERIFY(plot.hasLabel(headline));
    QCOMPARE(failures.size(), staysChecked ? 1 : 0);

    if (staysChecked) {
        MouseClick::on(plot.watch->box());
    }
    QCOMPARE(plot.watch->headline(), QStringLiteral("Not recording"));
    QVERIFY(plot.record(logPath())); // nothing of it stays behind
}

void RecordingsTest::fileVanishesAndComesBack()
{
    GrowingPlot plot;
    QVERIFY(plot.open());
    const QString path = logPath();
    QVERIFY(plot.record(path));
    QTRY_VERIFY(linesOf(path).size() > 6);
    plot.look();
    const int linesBefore = plot.watch->dataLines();
    QVERIFY(QDir(temporaryPath(QStringLiteral("logs"))).removeRecursively());
    plot.look();
    QVERIFY2(plot.watch->problem().startsWith(QStringLiteral("run.csv has vanished: there is no such folder")),
             qPrintable(plot.watch->problem()));
    QVERIFY(plot.watch->lastFailure().contains(QStringLiteral("vanished")));

    QDir().mkpath(temporaryPath(QStringLiteral("logs")));
    QTRY_VERIFY(linesOf(path).size() > 3);
    plot.look();
    QVERIFY2(plot.watch->problem().startsWith(QStringLiteral("run.csv was replaced")),
             qPrintable(plot.watch->problem()));
    QVERIFY(plot.watch->dataLines() > linesBefore);
    QVERIFY(plot.watch->state() == State::Recording);
}

void RecordingsTest::anotherFileOfTheSameNameIsRecognised()
{
    const auto write = [this](const QByteArray &text) {
        QFile file(logPath());
        return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
    };
    LogFollower follower(logPath());
    QVERIFY(write("Module:;M;\r\nCounter;x;\r\n1;5;\r\n2;6"));
    follower.look();
    QCOMPARE(follower.dataLines(), 1); // the second is not complete
    QVERIFY(follower.hasHeader() && !follower.wasReplaced());
    QVERIFY(write("3;7;\r\n4;8;\r\n5;9;\r\n6;10;\r\n7;11;\r\n8;12;\r\n"));
    follower.look();
    QCOMPARE(follower.dataLines(), 7);
    QVERIFY(!follower.hasHeader() && follower.wasReplaced());
}

void RecordingsTest::announcedLinesThatNeverArriveAreTold()
{
    GrowingPlot plot;
    QVERIFY(plot.open());
    qDebug("new line: of before, which is none of this recording");
    QVERIFY(plot.record(logPath()));
    qDebug("virtual void XYPlotter::timerEvent(QTimerEvent*) new line:  2 ; 1;1;");
    qDebug("virtual void XYPlotter::timerEvent(QTimerEvent*) new line:  3 ; 1;1;");
    plot.look();
    QCOMPARE(plot.watch->missingLines(), 2);
    QCOMPARE(plot.watch->problem(), QStringLiteral("2 lines sampled but not in run.csv; the reason is not known"));
    plot.look(); // no more are lost
    QCOMPARE(plot.watch->problem(), QString());
    QVERIFY(plot.watch->lastFailure().contains(QStringLiteral("2 lines sampled")));
}

void RecordingsTest::reopenedWindowNoLongerRecords()
{
    GrowingPlot plot;
    QVERIFY(plot.open());
    QVERIFY(plot.record(logPath()));
    plot.container->parentWidget()->close();
    QVERIFY(plot.watch->headline().contains(QStringLiteral("window is hidden")));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    plot.window->openContainer(plot.container);
    QVERIFY(plot.watch->state() == State::CheckedOnly);
    QVERIFY(plot.watch->headline().startsWith(QStringLiteral("The box is checked, but nothing")));
}

GUARDED_TEST_MAIN(RecordingsTest)
#include "RecordingsTest.moc"
