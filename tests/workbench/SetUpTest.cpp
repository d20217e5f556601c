#include "GrowingPlot.h"
#include "setup/ChoiceReader.h"
#include "setup/SceneWriter.h"
#include "window/FileMenu.h"
#include "window/RecentFiles.h"
#include "window/SceneExchange.h"

#include <sys/stat.h>

using PlotterWindow::Side;

namespace
{

/// What there is, as it would be written.
QByteArray textOf(GrowingPlot &plot)
{
    Scene scene = SceneExchange(&plot.workbench, plot.window.get()).taken();
    scene.title = "T";
    return sceneText(scene);
}

QStringList replaceBy(GrowingPlot &plot, const QByteArray &text)
{
    const SceneResult read = readScene(text, "file");
    return read.errors.isEmpty() ? SceneExchange(&plot.workbench, plot.window.get()).replaceBy(read.scene)
                                 : read.errors;
}

/// Makes a state with something of everything: two containers, curves with gaps, modules with other settings.
void disturb(GrowingPlot &plot)
{
    ModuleRack &modules = plot.modules();
    QCOMPARE(modules.add({"SIM9/Out", SimulationSettings{"io-block"}}, 1), QString());
    QTest::qWait(50); // the notice of the new module empties the boxes
    modules.setMoving(1, false);
    modules.setSilent(0, true);
    modules.setAnswerTime(1, 33);
    modules.setPluggedIn(2, false);
    QTest::qWait(50);

    Scene scene = readSceneFile(shippedScenePath("two-modules")).scene;
    scene.curves.append({{}, scene.curves.constFirst().y, true});
    scene.curves.append(SceneCurve{{}, {}, false});
    scene.curves.append(scene.curves.constFirst());
    scene.curves[3].x.motor = "Register";
    scene.curves[3].x.value = "Axis 1 position";
    scene.curves[3].x.isSigned = true;
    scene.curves[0].isOn = false;
    scene.selectedCurve = 3;
    scene.showsLines = false;
    scene.showsAll = true;
    plot.choose(scene);
    plot.window->openContainer(plot.window->addContainer());
    plot.window->setPlace(plot.workbench.containers().at(1), {WindowPlace::State::Normal, QRect(30, 20, 900, 500)});
    plot.dock("module")->hide();
}

/// Answers the message boxes and file dialogs to come, in their order, and notes what they say.
class Answers : public QObject
{
public:
    /// \param answers each a button's text without its mnemonic, or the path of a file for a file dialog
    explicit Answers(const QStringList &answers) : m_answers(answers)
    {
        connect(&m_timer, &QTimer::timeout, this, &Answers::answer);
        m_timer.start(0);
    }

    QStringList asked; ///< texts of the boxes

    bool areAllGiven() const
    {
        return m_answers.isEmpty();
    }

private:
    void answer()
    {
        QWidget *const modal = QApplication::activeModalWidget();
        if (auto *const dialog = qobject_cast<QFileDialog *>(modal)) {
            dialog->selectFile(m_answers.takeFirst());
            static_cast<QDialog *>(dialog)->accept();
        } else if (auto *const box = qobject_cast<QMessageBox *>(modal)) {
            asked.append(box->text() + QLatin1Char('\n') + box->informativeText());
            const QString wanted = m_answers.isEmpty() ? QString() : m_answers.takeFirst();
            const QList<QAbstractButton *> buttons = box->buttons();
            for (QAbstractButton *const button : buttons) {
                if (button->text().remove('&') == wanted) {
                    return button->click();
                }
            }
            asked.append(QString("no button ") + wanted);
            box->reject();
        }
    }

    QStringList m_answers;
    QTimer m_timer;
};

/// Triggers an entry of the File menu, also of its submenus.
void trigger(const GrowingPlot &plot, const QString &text)
{
    QMenu *const menu = plot.window->fileMenu()->menu();
    for (QMenu *const submenu : partsOf<QMenu>(*menu)) {
        emit submenu->aboutToShow();
    }
    partCalled<QAction>(*menu, text)->trigger();
}

} // namespace

/// Set-ups: what is there becomes a file, and a file becomes what is there, or nothing changes.
class SetUpTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void writtenAndReadIsTheSame()
    {
        GrowingPlot plot("two-modules");
        disturb(plot);
        const QByteArray text = textOf(plot);
        // Neither the writer nor the reader leaves these out.
        for (const char *const part :
             {"\"answerTimeMs\": 33", "\"moving\": false", "\"pluggedIn\": false", "\"signed\": true", "\"on\": false",
              "\"selectedCurve\": 4", "\"showAll\": true", "\"frontContainer\": 2", "\"width\": 900", "\"x\": null"}) {
            QVERIFY2(text.contains(part), part);
        }
        GrowingPlot other("phase");
        QCOMPARE(replaceBy(other, text), QStringList());
        QCOMPARE(QString::fromUtf8(textOf(other)), QString::fromUtf8(text));
        QVERIFY(!other.dock("module")->isVisible());
        bool showsAnswerTime = false;
        for (const QComboBox *const box : partsOf<QComboBox>(*other.window)) {
            showsAnswerTime = showsAnswerTime || box->currentText() == "Slow: 33 ms";
        }
        QVERIFY(showsAnswerTime);
        QCOMPARE(replaceBy(other, text), QStringList()); // over itself, with the same keys
        QCOMPARE(QString::fromUtf8(textOf(other)), QString::fromUtf8(text));
    }

    void whatCannotBeSetUpChangesNothing()
    {
        GrowingPlot plot("two-modules");
        disturb(plot);
        const QString text = QString::fromUtf8(textOf(plot));
        const QString docks = text.section("\"docks\": \"", 1).section('"', 0, 0);
        QByteArray damaged = QByteArray::fromBase64(docks.toLatin1());
        damaged[damaged.size() / 2] = static_cast<char>(damaged.at(damaged.size() / 2) ^ 1);
        const QStringList mistakes[] = {
            // what stands in place of what, and parts of the errors
            {"Actual position [", "Actual positon [", "curve 1, X", "nearest are: \"Actual position [microsteps]\"",
             "curve 1, Y", "curve 2, Y"},
            {"\"motor\": \"Axis 0\"", "\"motor\": \"Axis 7\"", "no motor \"Axis 7\", only: \"Axis 0\""},
            {"\"value\": \"Axis 1 position\"", "\"value\": \"Status: Position reached\"", "curve 4, X"},
            {"\"plugin\": \"XYPlotter\"", "\"plugin\": \"XYPloter\"",
             "no plugin \"XYPloter\" is loaded, only: \"XYPlotter\""},
            {docks, QString::fromLatin1(damaged.toBase64()), "docks"}};
        GrowingPlot other("phase");
        const QByteArray before = textOf(other);
        const QList<ContainerInterface *> containers = other.workbench.containers();
        const auto *const module = other.modules().module(0);
        for (const QStringList &mistake : mistakes) {
            QVERIFY2(text.contains(mistake.at(0)), qPrintable(mistake.at(0)));
            const QString found =
                replaceBy(other, QString(text).replace(mistake.at(0), mistake.at(1)).toUtf8()).join('\n');
            const QStringList errors = mistake.mid(2);
            for (const QString &error : errors) {
                QVERIFY2(found.contains(error), qPrintable(found));
            }
            QCOMPARE(other.workbench.containers(), containers); // with their points and recordings
            QCOMPARE(other.modules().module(0), module);
            QCOMPARE(QString::fromUtf8(textOf(other)), QString::fromUtf8(before));
        }
    }

    void whatCannotBeOpenedIsNotSaved()
    {
        const QString path = temporaryPath("kept.xyplot");
        Scene scene = readSceneFile(shippedScenePath("phase")).scene;
        QCOMPARE(writeSceneFile(scene, path), QString());
        const qint64 before = QFileInfo(path).size();
        while (scene.furtherContainers.size() < Scene::maximumContainers) {
            scene.furtherContainers.append(SceneContainer());
        }
        QVERIFY(writeSceneFile(scene, path).contains("containers"));
        QCOMPARE(QFileInfo(path).size(), before);
    }

    void takenOutModuleNeedsNothing()
    {
        GrowingPlot plot("phase");
        QCOMPARE(replaceBy(plot, R"({ "title": "T", "curves": [], "modules": [ { "kind": "recording", "key": "R",
            "pluggedIn": false, "file": "/absent.csv" } ] })"),
                 QStringList());
        QVERIFY(!plot.modules().isPluggedIn(0));
        plot.modules().setPluggedIn(0, true);
        plot.workbench.messages().deliver();
        QCOMPARE(plot.noted.filter("/absent.csv: there is no such file").size(), 1);
    }

    void menuSavesAndOpens()
    {
        GrowingPlot plot("phase");
        plot.window->fileMenu()->beginSession();
        const QString path = temporaryPath("my bench.xyplot");
        const Answers answers({temporaryPath("my bench")}); // the suffix is added
        trigger(plot, "Save As...");
        QVERIFY(answers.areAllGiven() && answers.asked.isEmpty());
        QVERIFY(plot.window->windowTitle().startsWith("my bench.xyplot[*] - XY Plot Workbench"));
        const SceneResult saved = readSceneFile(path);
        QCOMPARE(saved.errors, QStringList());
        QCOMPARE(saved.scene.title, QString("my bench"));
        QCOMPARE(saved.scene.curves.constFirst().y.value, QString("Axis 0 motion: Actual velocity"));
        QCOMPARE(RecentFiles::paths(), QStringList(path));

        trigger(plot, "Two modules: a stepper"); // nothing has changed: it does not ask
        QCOMPARE(plot.modules().count(), 2);
        QVERIFY(plot.window->windowTitle().startsWith("Two modules: a stepper axis against a servo axis[*]"));
        trigger(plot, "1 my bench.xyplot in ");
        QCOMPARE(plot.modules().count(), 1);
        trigger(plot, "New Set-Up");
        QCOMPARE(plot.modules().count(), 3);
        QVERIFY(plot.window->windowTitle().startsWith("New set-up[*]"));
        QVERIFY(answers.asked.isEmpty());
    }

    void nothingIsLostUnasked_data()
    {
        testRows<bool, bool, QStringList, bool>(
            {"isRecording", "isChanged", "answers", "mayEnd"},
            {{"nothing to lose", false, false, {}, true},
             {"changes, discarded", false, true, {"Discard"}, true},
             {"changes, cancelled", false, true, {"Cancel"}, false},
             {"changes, saved", false, true, {"Save", "saved.xyplot"}, true},
             {"changes, cannot be saved", false, true, {"Save", "folder/saved.xyplot", "OK"}, false},
             {"recording, goes on", true, false, {"Cancel"}, false},
             {"recording, ended", true, false, {"Quit"}, true},
             {"both", true, true, {"Cancel"}, false}});
    }

    void nothingIsLostUnasked()
    {
        QFETCH(bool, isRecording);
        QFETCH(bool, isChanged);
        QFETCH(QStringList, answers);
        QFETCH(bool, mayEnd);
        GrowingPlot plot;
        plot.window->fileMenu()->beginSession();
        if (isRecording) {
            plot.recordLines(temporaryPath("run.csv"));
        }
        if (isChanged) {
            plot.modules().setMoving(0, false);
        }
        plot.window->resize(700, 500); // is saved with a set-up, as is the page, and no change of it
        plot.container->findChildren<QRadioButton *>().at(1)->click();
        for (QString &answer : answers) {
            answer = answer.endsWith("xyplot") ? temporaryPath(answer) : answer;
        }
        const Answers given(answers);
        QCOMPARE(plot.window->close(), mayEnd);
        QVERIFY2(given.areAllGiven() && !given.asked.join('\n').contains("no button"),
                 qPrintable(given.asked.join('\n')));
        QCOMPARE(given.asked.join('\n').contains("recording", Qt::CaseInsensitive), isRecording);
        QCOMPARE(given.asked.join('\n').contains("Save the changes"), isChanged);
        QCOMPARE(QFile::exists(temporaryPath("saved.xyplot")), answers.size() == 2);
    }

    void fileThatIsOfNoUseIsReportedOnce()
    {
        const QString path = temporaryPath("bad.xyplot");
        const QPair<QByteArray, QString> files[] = {
            {QByteArray(), "There is no file"}, // it is not written
            {"Counter;X;Y\r\n", "expected JSON"},
            {QByteArray(100000, '['), "expected JSON"},
            {QByteArray(2000000, ' '), "up to 1024 KiB"},
            {R"({ "modules": [], "curves": [ { "x": null, "y": null, "of": 1 } ] })",
             "\"title\": expected a text that is not empty\n" + path +
                 ": field \"curves[0].of\": expected no such field"}};
        GrowingPlot plot;
        plot.window->fileMenu()->beginSession();
        const QByteArray before = textOf(plot);
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(path)});
        for (const auto &[content, report] : files) {
            if (!content.isNull()) {
                written("bad.xyplot", content);
            }
            RecentFiles::add(path);
            const Answers answers({"OK"});
            QDragEnterEvent enter(QPoint(9, 9), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(plot.window.get(), &enter);
            QVERIFY(enter.isAccepted());
            QDropEvent drop(QPointF(9, 9), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(plot.window.get(), &drop);
            QVERIFY(drop.isAccepted());
            QTRY_COMPARE(answers.asked.size(), 1);
            QVERIFY2(answers.asked.constFirst().contains(report), qPrintable(answers.asked.constFirst()));
            QCOMPARE(QString::fromUtf8(textOf(plot)), QString::fromUtf8(before));
            QCOMPARE(RecentFiles::paths().contains(path), !content.isNull());
        }
    }

    void pipesAndDevicesAreLeftAlone()
    {
        const QString pipe = temporaryPath("pipe.xyplot");
        QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), S_IRWXU), 0);
        QVERIFY(readSceneFile(pipe).error.contains(pipe)); // and did not wait
        Scene scene;
        scene.title = "T";
        QVERIFY(writeSceneFile(scene, pipe).contains(pipe));
        QVERIFY(QFileInfo::exists(pipe) && !QFileInfo(pipe).isFile());
    }

    void filesAreSoughtBesideTheSetUp()
    {
        const SceneResult read = readSceneFile(written("bench.xyplot", R"({ "title": "T", "curves": [], "modules": [
            { "kind": "recording", "key": "R", "file": "logs/run.csv" },
            { "kind": "modbus-tcp", "key": "D", "host": "h", "map": "drive.json" } ] })"));
        QCOMPARE(read.errors, QStringList());
        QCOMPARE(std::get<RecordingSettings>(read.scene.modules.at(0).family).file, temporaryPath("logs/run.csv"));
        QCOMPARE(std::get<DeviceSettings>(read.scene.modules.at(1).family).mapFile, temporaryPath("drive.json"));
    }

    void recentFilesAreTheLastTen()
    {
        for (int i = 0; i < 12; ++i) {
            RecentFiles::add(temporaryPath(QString("%1.xyplot").arg(i)));
        }
        RecentFiles::add(temporaryPath("5.xyplot")); // known: moves to the front
        const QStringList paths = RecentFiles::paths();
        QCOMPARE(paths.size(), RecentFiles::maximumCount);
        QCOMPARE(paths.mid(0, 2), QStringList({temporaryPath("5.xyplot"), temporaryPath("11.xyplot")}));
        QCOMPARE(paths.count(paths.constFirst()), 1);
        QVERIFY(!paths.contains(temporaryPath("1.xyplot")) && paths.contains(temporaryPath("2.xyplot")));
        RecentFiles::clear();
        QVERIFY(RecentFiles::paths().isEmpty());
    }

    void sourceOfAnotherModuleIsNamedAndLeftOut()
    {
        const GrowingPlot plot("two-modules");
        const QString box = PlotterWindow::selectorPage(1, Side::X).modules;
        auto *const modules = plot.container->findChild<QComboBox *>(box);
        modules->setCurrentIndex(modules->findText("SIM1", Qt::MatchContains)); // binds X of curve 1 to it as well
        const ChosenScene chosen = readChoices(plot.container);
        QVERIFY(chosen.choices.curves.at(0).x.isChosen() && !chosen.choices.curves.at(1).x.isChosen());
        QCOMPARE(chosen.losses.size(), 1);
        QVERIFY2(chosen.losses.constFirst().contains("curve 2, X"), qPrintable(chosen.losses.constFirst()));
    }
};

GUARDED_TEST(SetUpTest)
#include "SetUpTest.moc"
