#include "GuardedTest.h"
#include "MainWindow.h"
#include "MouseClick.h"
#include "Recordings.h"
#include "SceneReader.h"
#include "SceneRunner.h"
#include "Workbench.h"

#include "host/ContainerInterface.h"

#include <QAccessible>
#include <QCheckBox>
#include <QDockWidget>
#include <QFileDialog>
#include <QMdiSubWindow>
#include <QRadioButton>
#include <QSet>
#include <QSettings>

#include <memory>

namespace
{

constexpr int mostSteps = 300;

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
    GrowingPlot()
    {
        const Scene scene = readSceneFile(shippedScenePath(QStringLiteral("circle"))).scene;
        QCOMPARE(workbench.loadPlugin(PLUGIN), QString());
        QVERIFY(workbench.modules().add(scene.modules.constFirst(), 1));
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
        QCOMPARE(plot.watch->path(), path);
        QTRY_VERIFY(linesOf(path).size() > 6);
        plot.window->recordings()->look();
        QCOMPARE(plot.watch->problem(), QString());
        MouseClick::on(plot.watch->box());
        QCOMPARE(plot.watch->headline(), QStringLiteral("Not recording"));
        const QList<QByteArray> lines = linesOf(path); // two of header, and an empty one behind the last line end
        QCOMPARE(plot.watch->dataLines(), lines.size() - 3);
        QVERIFY(lines.at(lines.size() - 2).startsWith(QByteArray::number(plot.watch->dataLines()) + ';'));
        QCOMPARE(plot.watch->lastFailure(), QString());
    }

    void announcedLinesThatNeverArriveAreTold()
    {
        const GrowingPlot plot;
        qDebug("new line: of before, which is none of this recording");
        plot.record(temporaryPath("run.csv"));
        qDebug("virtual void XYPlotter::timerEvent(QTimerEvent*) new line:  2 ; 1;1;");
        plot.window->recordings()->look();
        QCOMPARE(plot.watch->missingLines(), 1);
        QVERIFY(plot.watch->problem().startsWith("1 line sampled but not in run.csv"));
        plot.window->recordings()->look(); // no more are lost
        QCOMPARE(plot.watch->problem(), QString());
    }

    /// For people who use the keyboard or have the screen read to them.
    void tabReachesEverythingAndEverythingHasAName()
    {
        const GrowingPlot plot;
        MainWindow &window = *plot.window;
        window.resize(1200, 800);
        window.showHint();
        QApplication::setActiveWindow(&window);

        QSet<QWidget *> reached;
        for (const char *const name : {"messageDock", "recordingDock", "exchangeDock"}) {
            auto *const dock = window.findChild<QDockWidget *>(name);
            QVERIFY(dock != nullptr);
            dock->show();
            dock->raise();
            QCoreApplication::processEvents();
            for (int step = 0; step < mostSteps; ++step) {
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
