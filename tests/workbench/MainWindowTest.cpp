#include "window/MainWindow.h"
#include "GuardedTest.h"
#include "modules/AnswerWatch.h"
#include "window/ScreenFit.h"
#include "window/Workbench.h"

#include "host/ContainerInterface.h"

#include <memory>

namespace
{

const QString smallPlugin = FIXTURE_FOLDER "/minimal_container.so";

/// The main window with a small plugin and one container.
struct SmallWindow
{
    SmallWindow()
    {
        QCOMPARE(workbench.loadPlugin(smallPlugin), QString());
        QCOMPARE(workbench.modules().add({"A", SimulationSettings{"io-block"}}), QString());
        QCOMPARE(workbench.modules().add({"B", SimulationSettings{"servo-1"}}), QString());
        main = std::make_unique<MainWindow>(&workbench);
        container = main->addContainer();
        workspace = main->findChild<QMdiArea *>();
        main->show();
    }

    Workbench workbench{SimulationClock::Drive::Exchanges, 1};
    std::unique_ptr<MainWindow> main;
    ContainerInterface *container = nullptr;
    QMdiArea *workspace = nullptr;
};

} // namespace

/// The main window with a small plugin: loading, opening, closing, what the status bar shows, and the order of the end.
class MainWindowTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void toolBarOpensClosesAndReopens()
    {
        const SmallWindow window;
        const auto *const toolBar = window.main->findChild<QToolBar *>();
        QWidget *const button = toolBar->widgetForAction(toolBar->actions().constFirst());
        for (int opening = 0; opening < 2; ++opening) {
            QTest::mouseClick(button, Qt::LeftButton);
            QCOMPARE(window.workspace->subWindowList().size(), 1);
            QMdiSubWindow *const subWindow = window.workspace->subWindowList().constFirst();
            subWindow->showMinimized();
            QApplication::setActiveWindow(window.main.get());
            QTest::keyClick(window.main.get(), Qt::Key_1, Qt::AltModifier); // an open one is not opened again
            QCOMPARE(window.workspace->subWindowList().size(), 1);
            QVERIFY(window.container->isVisible() && !subWindow->isMinimized());
            QCoreApplication::processEvents();
            for (int click = 0; click < 2; ++click) { // the second one activates nothing
                QTest::mouseClick(button, Qt::LeftButton);
                QVERIFY(toolBar->actions().constFirst()->isChecked()); // it still is in front
            }
            // Closed by the frame's button, then by the window itself: both have to go.
            opening == 0 ? subWindow->close() : window.container->parentWidget()->close();
            QVERIFY(window.container->parent() == nullptr);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY(window.workspace->subWindowList().isEmpty());
        }
        QTest::keyClick(window.main.get(), Qt::Key_N, Qt::ControlModifier); // one more container, which is opened
        QCOMPARE(window.workspace->subWindowList().size(), 1);
        QTest::keyClick(window.main.get(), Qt::Key_Q, Qt::ControlModifier);
        QVERIFY(!window.main->isVisible());
    }

    void removedContainersLeaveTheirNamesToOthers()
    {
        const SmallWindow window;
        window.main->openContainer(window.container);
        ContainerInterface *const second = window.main->addContainer();
        QPixmap drawing(16, 16);
        drawing.fill(Qt::red);
        second->setWindowIcon(drawing); // the first one's is the application's
        window.main->openContainer(second);
        QCOMPARE(window.workspace->currentSubWindow()->windowIcon().cacheKey(), second->windowIcon().cacheKey());
        const auto *const toolBar = window.main->findChild<QToolBar *>();
        QCOMPARE(toolBar->actions().size(), 2);
        QVERIFY(!toolBar->actions().at(0)->isChecked() && toolBar->actions().at(1)->isChecked()); // which is in front
        window.main->openContainer(window.container);
        partCalled<QAction>(*window.main->menuBar(), "Remove")->trigger();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(window.workbench.containers(), QList<ContainerInterface *>({second}));
        QCOMPARE(toolBar->actions().size(), 1);
        QVERIFY(!toolBar->actions().constFirst()->text().endsWith("(2)"));
        QCOMPARE(toolBar->actions().constFirst()->shortcut(), QKeySequence("Alt+1"));
        // Their settings are kept under their names: no two may have the same.
        QCOMPARE(window.main->addContainer()->name(), QString("MinimalContainer 1"));
        QCOMPARE(toolBar->actions().at(1)->shortcut(), QKeySequence("Alt+2"));
        QCOMPARE(window.main->addContainer()->name(), QString("MinimalContainer 3"));
    }

    void statusBarShowsModulesAndMessages()
    {
        SmallWindow window;
        window.workbench.modules().setPluggedIn(1, false);
        partCalled<QLabel>(*window.main->statusBar(), "1 of 2 modules plugged in");

        QVector<LogMessage> arrived;
        MessageLog &log = window.workbench.messages();
        log.deliver(); // what the platform has written, and that a module was taken out
        connect(&log, &MessageLog::arrived, this, [&](const QVector<LogMessage> &messages) { arrived = messages; });
        auto *const watch = window.main->findChild<AnswerWatch *>();
        emit watch->fellSilent(1);
        emit watch->answersAgain(1, 7);
        qDebug("detail");
        log.deliver();
        QCOMPARE(arrived.size(), 3);
        QVERIFY(arrived.at(0).type == QtWarningMsg && arrived.at(0).text.startsWith("B does not answer any more: "));
        QCOMPARE(arrived.at(1).text, QString("B answers again, after 7 s"));
        QCOMPARE(window.main->statusBar()->currentMessage(), arrived.at(1).text); // debug lines are not shown there
        window.workbench.modules().remove(0);
        partCalled<QLabel>(*window.main->statusBar(), "0 of 1 modules plugged in");
    }

    void windowFitsItsScreen_data()
    {
        testRows<QSize>({"screen"},
                        {{"low", {1280, 720}}, {"1920x1080 at ratio 2", {960, 540}}, {"roomy", {2560, 1440}}});
    }

    void windowFitsItsScreen()
    {
        QFETCH(QSize, screen);
        const ScreenFit fit(screen);
        const QSize framed = fit.size + QSize(2, 24); // the smallest frame of a desktop
        QVERIFY(framed.width() <= screen.width() && framed.height() <= screen.height());
        QCOMPARE(fit.showsModules, screen.width() > 1000);
        QCOMPARE(fit.showsMessages, screen.height() > 600);

        // What the window needs with these panels is not more than it gets.
        Workbench workbench(SimulationClock::Drive::Exchanges, 1);
        MainWindow window(&workbench);
        for (const char *const name : {"messageDock", "recordingDock", "exchangeDock"}) {
            window.findChild<QDockWidget *>(name)->setVisible(fit.showsMessages);
        }
        window.findChild<QDockWidget *>("moduleDock")->setVisible(fit.showsModules);
        const QSize own = QGuiApplication::primaryScreen()->availableSize();
        QVERIFY(window.width() < own.width() && window.height() < own.height()); // as it begins on the screen here
        window.show();
        window.resize(fit.size);
        QCOMPARE(window.size(), fit.size);
        QVERIFY(window.rect().contains(window.statusBar()->geometry()));
    }

    void smallWorkspaceScrolls()
    {
        const SmallWindow window;
        window.container->setMinimumSize(700, 400);
        window.main->openContainer(window.container);
        window.main->resize(window.main->minimumSize());
        QCoreApplication::processEvents();
        QVERIFY(window.container->width() >= 700 && window.container->height() >= 400);
        // By the bars of the container's own window: those of the workspace would move the frame with them.
        const auto *const scrollArea = window.workspace->subWindowList().constFirst()->findChild<QScrollArea *>();
        QVERIFY(scrollArea != nullptr && scrollArea->verticalScrollBar()->maximum() > 0);
        QVERIFY(scrollArea->height() < 400);
    }

    void motorsMoveWhileNobodyReadsThem()
    {
        Workbench byWallClock(SimulationClock::Drive::WallClock, 14);
        Workbench byExchanges(SimulationClock::Drive::Exchanges, 14);
        QTRY_VERIFY_WITH_TIMEOUT(byWallClock.modules().simulatedMs() > 2 * ModuleRack::catchUpIntervalMs, 30000);
        QCOMPARE(byExchanges.modules().simulatedMs(), qint64(0));
    }

    void everythingEndsInOrder()
    {
        // A second file with a class of the same name: their containers share settings, so their names must differ.
        const QString copy = temporaryPath("copy.so");
        QVERIFY(QFile::copy(smallPlugin, copy));
        auto workbench = std::make_unique<Workbench>(SimulationClock::Drive::Exchanges, 1);
        QCOMPARE(workbench->loadPlugin(smallPlugin), QString());
        QVERIFY(!workbench->loadPlugin(FIXTURE_FOLDER "/wrong_object.so").isEmpty());
        QCOMPARE(workbench->loadPlugin(copy), QString());
        auto window = std::make_unique<MainWindow>(workbench.get());
        QVERIFY(window->addContainer(0) != nullptr && window->addContainer(2) == nullptr);
        ContainerInterface *const second = window->addContainer(1);
        QCOMPARE(second->name(), QString("MinimalContainer 2"));
        window->openContainer(second);
        window->show();
        QVERIFY(window->findChild<QMdiArea *>()->subWindowList().constFirst()->windowTitle().endsWith("(2)"));
        window.reset(); // with a container window still open
        QCOMPARE(messages(QtInfoMsg), QStringList());
        workbench.reset();
        const QStringList ends = {"root destroyed", "file unmapped"};
        QCOMPARE(messages(QtInfoMsg), QStringList({"MinimalContainer 1 ends", "MinimalContainer 2 ends",
                                                   "MinimalContainer 1 destroyed", "MinimalContainer 2 destroyed"}) +
                                          ends + ends);
    }

    void uselessPluginFileIsRefused_data()
    {
        testRows<QString>({"reason"}, {{"/absent.so", "there is no such plugin file"},
                                       {"/", "no plugin"},
                                       {"/CTestTestfile.cmake", "no plugin"},
                                       {"/other_interface.so", "org.example.OtherInterface/1.0"},
                                       {"/wrong_object.so", "\"WrongObject\" is no container"},
                                       {"/missing_symbol.so", "definedNowhere"}});
    }

    void uselessPluginFileIsRefused()
    {
        QFETCH(QString, reason);
        const QString path = QString(FIXTURE_FOLDER) + QTest::currentDataTag();
        PluginFile plugin;
        const QString problem = plugin.load(path);
        QVERIFY2(problem.startsWith(path + ": "), qPrintable(problem));
        QVERIFY2(problem.contains(reason) && !problem.contains('\n'), qPrintable(problem));
        QVERIFY(plugin.root() == nullptr);

        // It leaves room for another, which in turn leaves nothing behind.
        QCOMPARE(plugin.load(smallPlugin), QString());
        QVERIFY(plugin.root() != nullptr);
        QVERIFY(plugin.unload());
        QCOMPARE(messages(QtInfoMsg), QStringList({"root destroyed", "file unmapped"}));
    }
};

GUARDED_TEST(MainWindowTest)
#include "MainWindowTest.moc"
