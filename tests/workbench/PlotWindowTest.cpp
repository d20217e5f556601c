#include "GuardedTest.h"
#include "PlotterWindow.h"
#include "application/Terminal.h"
#include "application/WorkbenchRun.h"
#include "logging/Recordings.h"
#include "setup/MouseClick.h"
#include "setup/SceneReader.h"
#include "setup/SceneRunner.h"
#include "window/MainWindow.h"
#include "window/ModulePanel.h"
#include "window/RecordingPanel.h"
#include "window/Workbench.h"

#include "host/ContainerInterface.h"

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QDockWidget>
#include <QFileDialog>
#include <QLabel>
#include <QLocale>
#include <QMdiSubWindow>
#include <QRadioButton>
#include <QSet>
#include <QSettings>
#include <QStatusBar>
#include <QTableView>

#include <csignal>
#include <memory>
#include <sys/resource.h>

using PlotterWindow::Option;
using PlotterWindow::Side;

namespace
{

constexpr int maximumSteps = 300;
constexpr int maximumWaitMs = 30000; // generous, for a busy machine: a wait ends when its condition holds

QList<QByteArray> linesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QList<QByteArray>();
}

/// Whether the Tab key has to come here. A window of the workspace hands the focus on to what is in it; of radio
/// buttons that belong together the chosen one is the only stop. Check boxes are always one: in a group Qt takes their
/// focus policy away.
bool isTabStop(const QWidget *widget)
{
    const bool takesTab =
        (widget->focusPolicy() & Qt::TabFocus) != 0 || qobject_cast<const QCheckBox *>(widget) != nullptr;
    if (!widget->isVisible() || !widget->isEnabled() || !takesTab || widget->focusProxy() != nullptr ||
        widget->isWindow() || qobject_cast<const QMdiSubWindow *>(widget) != nullptr) {
        return false;
    }
    const auto *const radioButton = qobject_cast<const QRadioButton *>(widget);
    return radioButton == nullptr || radioButton->isChecked();
}

/// The main window with the real plugin and the curves of a scene, which grow.
struct GrowingPlot
{
    explicit GrowingPlot(const QString &sceneName = QStringLiteral("circle"))
        : GrowingPlot(readSceneFile(shippedScenePath(sceneName)).scene)
    {
    }

    explicit GrowingPlot(const Scene &scene)
    {
        QCOMPARE(workbench.loadPlugin(PLUGIN), QString());
        for (const ModuleSettings &module : scene.modules) {
            QVERIFY(workbench.modules().add(module, 1));
        }
        window = std::make_unique<MainWindow>(&workbench);
        window->show();
        container = window->addContainer();
        window->openContainer(container);
        watch = window->recordings()->watch(container);
        QCOMPARE(SceneRunner(container).apply(scene), QString());
        // Both values of the first curve have come.
        QTRY_VERIFY_WITH_TIMEOUT(workbench.modules().answeredRequests() > 2, maximumWaitMs);
    }

    /// Clicks the box of the container, and types a name into the dialog while it is open.
    static void record(const RecordingWatch *watch, const QString &path)
    {
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
            if (auto *const dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget())) {
                poll.stop();
                dialog->selectFile(path);
                static_cast<QDialog *>(dialog)->accept();
            }
        });
        poll.start(0);
        MouseClick::on(watch->box()); // returns when the dialog is closed
    }

    /// Records until some lines are in the file.
    void recordLines(const QString &path) const
    {
        record(watch, path);
        QTRY_VERIFY_WITH_TIMEOUT(linesOf(path).size() > 6, maximumWaitMs);
        window->recordings()->poll();
    }

    /// The texts of the labels that are shown in \a widget, and of the symbols the text "symbol".
    static QStringList labelsIn(const QWidget *widget)
    {
        QStringList texts;
        const QList<QLabel *> labels = widget->findChildren<QLabel *>();
        for (const QLabel *const label : labels) {
            if (label->isVisibleTo(widget)) {
                texts.append(label->pixmap(Qt::ReturnByValue).isNull() ? label->text() : QStringLiteral("symbol"));
            }
        }
        return texts;
    }

    QStringList recordingPanel() const
    {
        return labelsIn(window->findChild<RecordingPanel *>());
    }

    Workbench workbench{SimulationClock::Drive::Exchanges, 14};
    std::unique_ptr<MainWindow> window;
    ContainerInterface *container = nullptr;
    RecordingWatch *watch = nullptr;
};

} // namespace

/// The main window with the real plugin: what a scene sets, what is found out about recordings, and the keyboard.
class PlotWindowTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // The file dialog keeps its folders in a file of the user's.
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_qtSettings.path());
    }

    void sceneSetsWhatItSays()
    {
        Scene scene = readSceneFile(shippedScenePath(QStringLiteral("phase"))).scene;
        SceneCurve second = scene.curves.constFirst();
        qSwap(second.x, second.y);
        second.y.motor = QStringLiteral("Axis 2");
        scene.curves.append(second);
        scene.showsLines = false;
        scene.isSquare = true;
        scene.showsAll = true;
        const GrowingPlot plot(scene);
        QCOMPARE(chosen(plot, 0, Side::X), QStringLiteral("SIM0/Stepper|Axis 0|Actual position [microsteps]|0"));
        QCOMPARE(chosen(plot, 0, Side::Y), QStringLiteral("SIM0/Stepper|Register|Axis 0 motion: Actual velocity|2"));
        QCOMPARE(chosen(plot, 1, Side::X), chosen(plot, 0, Side::Y));
        QCOMPARE(chosen(plot, 1, Side::Y), QStringLiteral("SIM0/Stepper|Axis 2|Actual position [microsteps]|0"));
        QCOMPARE(checkedBoxes(plot), QStringLiteral("curves 1100, options 011"));
        QVERIFY(plot.container->findChildren<QRadioButton *>().constFirst()->isChecked()); // its tables are shown
        QVERIFY(!plot.watch->box()->isChecked());

        scene.curves.removeLast();
        scene.showsLines = true;
        scene.isSquare = false;
        scene.showsAll = false;
        QCOMPARE(SceneRunner(plot.container).apply(scene), QString());
        QCOMPARE(checkedBoxes(plot), QStringLiteral("curves 1000, options 100"));
        scene.curves[0].x.value = QStringLiteral("Actual position");
        const QString error = SceneRunner(plot.container).apply(scene);
        QVERIFY2(error.contains("nearest are: \"Actual position [microsteps]\""), qPrintable(error));
    }

    void linesAreCountedUntilTheBoxIsUnchecked()
    {
        const GrowingPlot plot;
        const QString path = temporaryPath("run.csv");
        plot.recordLines(path);
        QVERIFY(plot.watch->state() == RecordingWatch::State::Recording);
        QCOMPARE(plot.watch->file().path(), path);
        QCOMPARE(plot.watch->problem(), QString());
        MouseClick::on(plot.watch->box());
        QCOMPARE(plot.watch->headline(), QStringLiteral("Not recording"));
        const QList<QByteArray> lines = linesOf(path); // two of header, and an empty one behind the last line end
        const int count = plot.watch->file().dataLines();
        QCOMPARE(count, lines.size() - 3);
        QVERIFY(lines.at(lines.size() - 2).startsWith(QByteArray::number(count) + ';'));
        QCOMPARE(plot.watch->lastFailure(), QString());
        QCOMPARE(plot.watch->linesWithOldValues(), 0);
        const QLocale locale;
        const QString counts = QStringLiteral("Lines: %1, bytes: %2, last line: ")
                                   .arg(locale.toString(count), locale.toString(QFileInfo(path).size()));
        QCOMPARE(plot.recordingPanel().filter(counts).size(), 1);
        QCOMPARE(plot.recordingPanel().size(), 3); // no symbol and no failure
    }

    void linesWithOldValuesAreCounted()
    {
        GrowingPlot plot(QStringLiteral("two-modules"));
        const QString path = temporaryPath("run.csv");
        plot.recordLines(path);
        const int fresh = plot.watch->file().dataLines();
        QCOMPARE(plot.watch->linesWithOldValues(), 0);
        plot.workbench.modules().setSilent(1, true);
        QTRY_VERIFY_WITH_TIMEOUT(linesOf(path).size() > fresh + 10, maximumWaitMs);
        plot.window->recordings()->poll();
        QCOMPARE(plot.watch->linesWithOldValues(), plot.watch->file().dataLines() - fresh);

        const QString key = plot.workbench.modules().description(1).key;
        QTRY_VERIFY_WITH_TIMEOUT(plot.watch->warning().endsWith("with old values; not answering: " + key),
                                 maximumWaitMs);
        QVERIFY(plot.watch->headline().contains(plot.watch->warning()) && plot.window->recordings()->hasTrouble());
        QCOMPARE(plot.watch->problem(), QString()); // every line is in the file
        QVERIFY(plot.recordingPanel().contains("symbol"));
        QCOMPARE(answersLabel(plot)->text().section(QStringLiteral(", "), 1), "not answering: " + key);

        plot.workbench.modules().setSilent(1, false);
        QTRY_VERIFY_WITH_TIMEOUT(!plot.watch->warning().contains("not answering"), maximumWaitMs);
        plot.window->recordings()->poll();
        const int lines = plot.watch->file().dataLines();
        const int old = plot.watch->linesWithOldValues();
        QTRY_VERIFY_WITH_TIMEOUT(linesOf(path).size() > lines + 10, maximumWaitMs);
        plot.window->recordings()->poll();
        QCOMPARE(plot.watch->linesWithOldValues(), old); // the new ones are not
        MouseClick::on(plot.watch->box());
        QVERIFY(plot.watch->linesWithOldValues() > 8); // still to be read when the recording is over
    }

    void statusBarStaysShort()
    {
        Scene scene = readSceneFile(shippedScenePath(QStringLiteral("two-modules"))).scene;
        const QString longKey = QStringLiteral("SIM9/") + QString(200, QLatin1Char('w'));
        scene.modules[1].key = longKey;
        scene.curves[0].y.module = longKey;
        GrowingPlot plot(scene);
        QVERIFY(!answersLabel(plot)->font().bold());
        plot.recordLines(temporaryPath("run.csv"));
        plot.workbench.modules().setSilent(1, true);
        QTRY_VERIFY_WITH_TIMEOUT(answersLabel(plot)->text().contains("not answering: SIM9"), maximumWaitMs);
        QVERIFY(answersLabel(plot)->font().bold());
        int width = 0;
        const QList<QLabel *> labels = plot.window->statusBar()->findChildren<QLabel *>();
        for (const QLabel *const label : labels) {
            width += label->sizeHint().width();
        }
        QVERIFY2(width < 1200, qPrintable(QString::number(width))); // of a window of the usual size
        plot.workbench.modules().setSilent(0, true);
        QTRY_VERIFY_WITH_TIMEOUT(answersLabel(plot)->text().endsWith("not answering: 2"), maximumWaitMs);
        QCOMPARE(answersLabel(plot)->toolTip(), QStringLiteral("SIM0/Stepper\n") + longKey);
    }

    void runReportsLinesWithOldValues()
    {
        RunPlan plan;
        plan.scene = readSceneFile(shippedScenePath(QStringLiteral("two-modules"))).scene;
        plan.seconds = 1.0;
        plan.plugins = QStringList(PLUGIN);
        plan.log = temporaryPath("run.csv");
        plan.hasScene = plan.isTimed = true;
        QTimer poll;
        connect(&poll, &QTimer::timeout, this, [&] {
            if (linesOf(plan.log).size() > 6) {
                poll.stop();
                const QWidgetList windows = QApplication::topLevelWidgets();
                for (const QWidget *const window : windows) {
                    if (const auto *const panel = window->findChild<ModulePanel *>()) {
                        panel->findChildren<QCheckBox *>().last()->click(); // "Silent" of the second module
                    }
                }
            }
        });
        poll.start(1);
        std::FILE *const output = std::tmpfile();
        WorkbenchRun(plan, Terminal(output, output)).exec();
        std::rewind(output);
        QByteArray text(1000, '\0');
        text.truncate(int(std::fread(text.data(), 1, size_t(text.size()), output)));
        std::fclose(output);
        QVERIFY2(text.contains("run.csv: lines with old values"), text.constData());
    }

    void announcedLinesThatNeverArriveAreReported()
    {
        const GrowingPlot plot;
        qDebug("new line: of before, which is none of this recording");
        GrowingPlot::record(plot.watch, temporaryPath("run.csv"));
        qDebug("virtual void XYPlotter::timerEvent(QTimerEvent*) new line:  2 ; 1;1;");
        auto *const dock = plot.window->findChild<QDockWidget *>("recordingDock");
        dock->hide();
        plot.window->recordings()->poll();
        QVERIFY(dock->isVisible());
        QCOMPARE(plot.watch->missingLines(), 1);
        QVERIFY(plot.watch->problem().startsWith("1 line sampled but not in run.csv"));
        plot.window->recordings()->poll(); // no more are lost
        QCOMPARE(plot.watch->problem(), QString());
        QVERIFY(plot.recordingPanel().last().contains("1 line sampled but not in run.csv")); // the last failure
    }

    /// The plugin goes on after each of these, and writes no header: only the workbench reports it.
    void disturbedLogIsReported_data()
    {
        QTest::addColumn<QString>("expected");
        QTest::newRow("removed") << "run.csv has vanished";
        QTest::newRow("removed and begun anew") << "run.csv was replaced";
        QTest::newRow("replaced") << "run.csv was replaced";
        QTest::newRow("truncated") << "run.csv was replaced";
    }

    void disturbedLogIsReported()
    {
        QFETCH(QString, expected);
        const QByteArray how = QTest::currentDataTag();
        GrowingPlot plot;
        const QString path = temporaryPath("run.csv");
        plot.recordLines(path);
        QStringList noted;
        connect(&plot.workbench.messages(), &MessageLog::arrived, this, [&](const QVector<LogMessage> &messages) {
            for (const LogMessage &message : messages) {
                noted.append(message.text);
            }
        });
        if (how == "truncated") {
            QVERIFY(QFile::resize(path, 40));
        } else {
            QVERIFY(QFile::remove(path));
        }
        if (how == "replaced") {
            QVERIFY(QFile::copy(QStringLiteral(PLUGIN), path)); // longer than the log
            QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
        } else if (how == "removed and begun anew") {
            QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(path), maximumWaitMs); // by the next line
        }
        for (int look = 0; look < 2; ++look) { // it stays so
            plot.window->recordings()->poll();
            QVERIFY2(plot.watch->problem().contains(expected), qPrintable(plot.watch->problem()));
            if (how == "removed") {
                break; // the next line may come at any time
            }
        }
        plot.workbench.messages().deliver();
        QCOMPARE(noted.filter(expected).size(), 1);
        QVERIFY(plot.recordingPanel().contains("symbol"));
        QCOMPARE(plot.recordingPanel().filter(expected).size(), 2); // the headline, and the last failure
    }

    void logWithoutItsHeaderIsReported()
    {
        const GrowingPlot plot;
        const QString path = temporaryPath("run.csv");
        rlimit usual = {};
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &usual), 0);
        const auto ignored = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit nothing = {0, usual.rlim_max};
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &nothing), 0); // as on a full disk: files can be made, and stay empty
        GrowingPlot::record(plot.watch, path);
        setrlimit(RLIMIT_FSIZE, &usual);
        std::signal(SIGXFSZ, ignored);
        QVERIFY2(plot.watch->problem().contains("its header could not be written"), qPrintable(plot.watch->problem()));
    }

    void boxOfAReopenedWindowIsReported()
    {
        const GrowingPlot plot;
        plot.recordLines(temporaryPath("run.csv"));
        plot.container->parentWidget()->close();
        plot.window->openContainer(plot.container);
        QVERIFY2(plot.watch->problem().contains("since the window was opened again"),
                 qPrintable(plot.watch->problem()));
    }

    void troubleComesBeforeWhatGoesWell()
    {
        const GrowingPlot plot;
        ContainerInterface *const other = plot.window->addContainer();
        plot.window->openContainer(other);
        plot.recordLines(temporaryPath("run.csv"));
        GrowingPlot::record(plot.window->recordings()->watch(other), QStringLiteral("/proc/run.csv"));
        const QString summary = plot.window->recordings()->summary();
        QVERIFY2(summary.contains("could not be opened") && !summary.contains("Recording into"), qPrintable(summary));
    }

    void containerKeepsAUsableSize()
    {
        const GrowingPlot plot;
        plot.window->resize(plot.window->minimumSize());
        QCoreApplication::processEvents();
        QVERIFY(plot.container->width() >= 800 && plot.container->height() >= 400); // it is scrolled
        plot.window->resize(1400, 900);
        QCoreApplication::processEvents();
        QVERIFY(plot.container->width() > 1000 && plot.container->height() > 500); // and takes all that there is
    }

    /// For people who use the keyboard or have the screen read to them.
    void tabReachesEverythingAndEverythingHasAName()
    {
        const GrowingPlot plot;
        MainWindow &window = *plot.window;
        window.resize(1200, 800);
        window.findChild<QDockWidget *>("moduleDock")->show();
        window.showHint();
        QApplication::setActiveWindow(&window);

        // Forwards: to the next stop, not to the one before.
        QCheckBox *const box = PlotterWindow::curveBoxes(plot.container).constFirst();
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Tab);
        const QWidget *next = box->nextInFocusChain();
        while (!isTabStop(next)) {
            next = next->nextInFocusChain();
        }
        QCOMPARE(QApplication::focusWidget(), next);

        QSet<QWidget *> reached;
        for (const char *const name : {"messageDock", "recordingDock", "exchangeDock"}) {
            auto *const dock = window.findChild<QDockWidget *>(name);
            QVERIFY(dock != nullptr);
            dock->show();
            dock->raise();
            QCoreApplication::processEvents();
            for (int step = 0; step < maximumSteps; ++step) {
                QWidget *const focused = QApplication::focusWidget();
                QTest::keyClick(focused == nullptr ? &window : focused, Qt::Key_Tab);
                reached.insert(QApplication::focusWidget());
            }
            const QList<QWidget *> widgets = window.findChildren<QWidget *>();
            for (QWidget *const widget : widgets) {
                if (isTabStop(widget)) {
                    const QString what = widget->metaObject()->className() + QLatin1Char(' ') + widget->objectName();
                    QVERIFY2(reached.contains(widget), qPrintable(what));
                    QAccessibleInterface *const spoken = QAccessible::queryAccessibleInterface(widget);
                    QVERIFY2(!spoken->text(QAccessible::Name).trimmed().isEmpty(), qPrintable(what));
                }
            }
        }
        QVERIFY(reached.size() > 25);
    }

private:
    static const QLabel *answersLabel(const GrowingPlot &plot)
    {
        const QList<QLabel *> labels = plot.window->statusBar()->findChildren<QLabel *>();
        for (const QLabel *const label : labels) {
            if (label->text().contains(" answers/s")) {
                return label;
            }
        }
        qFatal("no label with the rate of answers");
    }

    /// Module, motor, value and check state of the sign of a source, as the window shows them.
    static QString chosen(const GrowingPlot &plot, int curve, Side side)
    {
        const PlotterWindow::SelectorPage names = PlotterWindow::selectorPage(curve, side);
        const QModelIndex current = plot.container->findChild<QTableView *>(names.table)->currentIndex();
        const auto cell = [&current](int column) { return current.sibling(current.row(), column); };
        return QStringList({plot.container->findChild<QComboBox *>(names.modules)->currentText().trimmed(),
                            plot.container->findChild<QComboBox *>(names.motors)->currentText().trimmed(),
                            cell(PlotterWindow::nameColumn).data().toString().trimmed(),
                            QString::number(cell(PlotterWindow::signColumn).data(Qt::CheckStateRole).toInt())})
            .join(QLatin1Char('|'));
    }

    static QString checkedBoxes(const GrowingPlot &plot)
    {
        QString text = QStringLiteral("curves ");
        const QList<QCheckBox *> boxes = PlotterWindow::curveBoxes(plot.container);
        for (const QCheckBox *const box : boxes) {
            text += QString::number(int(box->isChecked()));
        }
        text += QStringLiteral(", options ");
        for (const Option option : {Option::Lines, Option::Square, Option::ShowAll}) {
            const QString name = PlotterWindow::optionBoxName(option);
            text += QString::number(int(plot.container->findChild<QCheckBox *>(name)->isChecked()));
        }
        return text;
    }

    const QTemporaryDir m_qtSettings;
};

GUARDED_TEST_MAIN(PlotWindowTest)
#include "PlotWindowTest.moc"
