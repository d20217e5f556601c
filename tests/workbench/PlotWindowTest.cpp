#include "GuardedTest.h"
#include "PlotterWindow.h"
#include "logging/Recordings.h"
#include "setup/MouseClick.h"
#include "setup/SceneReader.h"
#include "setup/SceneRunner.h"
#include "window/MainWindow.h"
#include "window/Workbench.h"

#include "host/ContainerInterface.h"

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QDockWidget>
#include <QFileDialog>
#include <QLabel>
#include <QMdiSubWindow>
#include <QRadioButton>
#include <QSet>
#include <QSettings>
#include <QStatusBar>
#include <QTableView>

#include <memory>

namespace
{

constexpr int maximumSteps = 300;

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

/// A plot with a growing curve in the main window.
struct GrowingPlot
{
    explicit GrowingPlot(const QString &sceneName = QStringLiteral("circle"))
    {
        const Scene scene = readSceneFile(shippedScenePath(sceneName)).scene;
        QCOMPARE(workbench.loadPlugin(PLUGIN), QString());
        for (const ModuleSettings &module : scene.modules) {
            QVERIFY(workbench.modules().add(module, 1));
        }
        window = std::make_unique<MainWindow>(&workbench);
        window->show();
        ContainerInterface *const container = window->addContainer();
        window->openContainer(container);
        watch = window->recordings()->watch(container);
        QCOMPARE(SceneRunner(container).apply(scene), QString());
        QTRY_VERIFY(workbench.modules().answeredRequests() > 2); // the curve has its first point
    }

    /// Clicks the box, and types a name into the dialog while it is open.
    void record(const QString &path) const
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

    Workbench workbench{SimulationClock::Drive::Exchanges, 14};
    std::unique_ptr<MainWindow> window;
    RecordingWatch *watch = nullptr;
};

} // namespace

/// The main window with the real plugin: who can reach what, and what is found out about recordings.
class PlotWindowTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // The file dialog keeps its folders in a file of the user's.
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_toolkitSettings.path());
    }

    void linesAreCountedUntilTheBoxIsUnchecked()
    {
        const GrowingPlot plot;
        const QString path = temporaryPath("run.csv");
        plot.record(path);
        QVERIFY(plot.watch->state() == RecordingWatch::State::Recording);
        QCOMPARE(plot.watch->file().path(), path);
        QTRY_VERIFY(linesOf(path).size() > 6);
        plot.window->recordings()->poll();
        QCOMPARE(plot.watch->problem(), QString());
        MouseClick::on(plot.watch->box());
        QCOMPARE(plot.watch->headline(), QStringLiteral("Not recording"));
        const QList<QByteArray> lines = linesOf(path); // two of header, and an empty one behind the last line end
        QCOMPARE(plot.watch->file().dataLines(), lines.size() - 3);
        QVERIFY(lines.at(lines.size() - 2).startsWith(QByteArray::number(plot.watch->file().dataLines()) + ';'));
        QCOMPARE(plot.watch->lastFailure(), QString());
        QCOMPARE(plot.watch->linesWithOldValues(), 0);
    }

    void linesWithOldValuesAreCounted()
    {
        GrowingPlot plot(QStringLiteral("two-modules"));
        const QString path = temporaryPath("run.csv");
        plot.record(path);
        QTRY_VERIFY(linesOf(path).size() > 6);
        plot.window->recordings()->poll();
        const int fresh = plot.watch->file().dataLines();
        QCOMPARE(plot.watch->linesWithOldValues(), 0);
        plot.workbench.modules().setSilent(1, true);
        QTRY_VERIFY(linesOf(path).size() > fresh + 10);
        plot.window->recordings()->poll();
        QCOMPARE(plot.watch->linesWithOldValues(), plot.watch->file().dataLines() - fresh);

        const QString key = plot.workbench.modules().description(1).key;
        QTRY_VERIFY(plot.watch->warning().endsWith("with old values; not answering: " + key));
        QVERIFY(plot.watch->headline().contains(plot.watch->warning()) && plot.window->recordings()->hasTrouble());
        QCOMPARE(plot.watch->problem(), QString()); // every line is in the file
        bool isInStatusBar = false;
        const QList<QLabel *> labels = plot.window->statusBar()->findChildren<QLabel *>();
        for (const QLabel *const label : labels) {
            isInStatusBar = isInStatusBar || label->text().contains(" answers/s, not answering: " + key);
        }
        QVERIFY(isInStatusBar);

        plot.workbench.modules().setSilent(1, false);
        QTRY_VERIFY(!plot.watch->warning().contains("not answering"));
        plot.window->recordings()->poll();
        const int lines = plot.watch->file().dataLines();
        const int old = plot.watch->linesWithOldValues();
        QTRY_VERIFY(linesOf(path).size() > lines + 10);
        plot.window->recordings()->poll();
        QCOMPARE(plot.watch->linesWithOldValues(), old); // the new ones are not
        MouseClick::on(plot.watch->box());
        QVERIFY(plot.watch->linesWithOldValues() > 8); // still to be read when the recording is over
    }

    void containerKeepsAUsableSize()
    {
        const GrowingPlot plot;
        const ContainerInterface *const container = plot.workbench.containers().constFirst();
        plot.window->resize(plot.window->minimumSize());
        QCoreApplication::processEvents();
        QVERIFY(container->width() >= 800 && container->height() >= 400); // it is scrolled
        plot.window->resize(1400, 900);
        QCoreApplication::processEvents();
        QVERIFY(container->width() > 1000 && container->height() > 500); // and takes all that there is
    }

    void sceneSetsWhatItSays()
    {
        const GrowingPlot plot;
        ContainerInterface *const container = plot.workbench.containers().constFirst();
        Scene scene = readSceneFile(shippedScenePath(QStringLiteral("circle"))).scene;
        scene.curves.append(scene.curves.constFirst());
        std::swap(scene.curves[1].x, scene.curves[1].y);
        for (const bool on : {true, false}) {
            scene.showsLines = on;
            scene.isSquare = !on;
            scene.showsAll = on;
            QCOMPARE(SceneRunner(container).apply(scene), QString());
            const auto isChecked = [container](PlotterWindow::Option option) {
                return container->findChild<QCheckBox *>(PlotterWindow::optionBoxName(option))->isChecked();
            };
            QCOMPARE(isChecked(PlotterWindow::Option::Lines), on);
            QCOMPARE(isChecked(PlotterWindow::Option::Square), !on);
            QCOMPARE(isChecked(PlotterWindow::Option::ShowAll), on);
        }
        QList<bool> recorded;
        const QList<QCheckBox *> boxes = container->findChildren<QCheckBox *>();
        for (const QCheckBox *const box : boxes) {
            if (box->property("ColorName").isValid()) {
                recorded.append(box->isChecked());
            }
        }
        QCOMPARE(recorded, QList<bool>({true, true, false, false}));
        const auto chosen = [container](int curve, PlotterWindow::Side side) {
            const auto page = PlotterWindow::selectorPage(curve, side);
            const QModelIndex index = container->findChild<QTableView *>(page.table)->currentIndex();
            return container->findChild<QComboBox *>(page.motors)->currentText().trimmed() + '/' +
                   index.sibling(index.row(), PlotterWindow::nameColumn).data().toString().trimmed();
        };
        const SceneSource &x = scene.curves.at(1).x;
        QCOMPARE(chosen(1, PlotterWindow::Side::X), x.motor + '/' + x.value);
        QCOMPARE(chosen(0, PlotterWindow::Side::Y), x.motor + '/' + x.value);
        QVERIFY(chosen(0, PlotterWindow::Side::X) != chosen(1, PlotterWindow::Side::X));
    }

    void announcedLinesThatNeverArriveAreTold()
    {
        const GrowingPlot plot;
        qDebug("new line: of before, which is none of this recording");
        plot.record(temporaryPath("run.csv"));
        qDebug("virtual void XYPlotter::timerEvent(QTimerEvent*) new line:  2 ; 1;1;");
        plot.window->recordings()->poll();
        QCOMPARE(plot.watch->missingLines(), 1);
        QVERIFY(plot.watch->problem().startsWith("1 line sampled but not in run.csv"));
        plot.window->recordings()->poll(); // no more are lost
        QCOMPARE(plot.watch->problem(), QString());
    }

    void replacedLogIsTold()
    {
        GrowingPlot plot;
        const QString path = temporaryPath("run.csv");
        plot.record(path);
        QTRY_VERIFY(linesOf(path).size() > 6);
        QVERIFY(QFile::remove(path));
        QTRY_VERIFY(QFileInfo::exists(path)); // the next line makes a new one
        QStringList told;
        QObject::connect(&plot.workbench.messages(), &MessageLog::arrived, &plot.workbench.messages(),
                         [&told](const QVector<LogMessage> &messages) {
                             for (const LogMessage &message : messages) {
                                 told.append(message.text);
                             }
                         });
        plot.window->recordings()->poll();
        QVERIFY(plot.watch->missingLines() > 3);
        QVERIFY2(plot.watch->problem().contains("replaced"), qPrintable(plot.watch->problem()));
        plot.workbench.messages().deliver();
        QCOMPARE(told.filter("run.csv was replaced").size(), 1);
        plot.window->recordings()->poll(); // it stays so
        QVERIFY(plot.watch->problem().contains("replaced"));
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
    const QTemporaryDir m_toolkitSettings;
};

GUARDED_TEST_MAIN(PlotWindowTest)
#include "PlotWindowTest.moc"
