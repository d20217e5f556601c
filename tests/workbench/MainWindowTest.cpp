#include "window/MainWindow.h"
#include "GuardedTest.h"
#include "window/ScreenFit.h"
#include "window/Workbench.h"

#include "host/ContainerInterface.h"

#include <QDockWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>
#include <QToolBar>

#include <memory>

/// The main window with a small plugin: opening, closing, modules that come and go, and the order of the end.
class MainWindowTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void toolBarOpensClosesAndReopens()
    {
        Workbench workbench(SimulationClock::Drive::Exchanges, 1);
        QCOMPARE(workbench.loadPlugin(FIXTURE_FOLDER "/minimal_container.so"), QString());
        MainWindow window(&workbench);
        const ContainerInterface *const container = window.addContainer();
        window.show();
        const auto *const toolBar = window.findChild<QToolBar *>();
        const auto *const workspace = window.findChild<QMdiArea *>();
        QWidget *const button = toolBar->widgetForAction(toolBar->actions().constFirst());
        for (int opening = 0; opening < 2; ++opening) {
            QTest::mouseClick(button, Qt::LeftButton);
            QTest::mouseClick(button, Qt::LeftButton); // an open one is not opened again
            QCOMPARE(workspace->subWindowList().size(), 1);
            QVERIFY(container->isVisible());
            // By the frame's button, and by the window itself: neither may leave the other behind.
            opening == 0 ? workspace->subWindowList().constFirst()->close() : container->parentWidget()->close();
            QVERIFY(container->parent() == nullptr);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY(workspace->subWindowList().isEmpty());
        }
    }

    void windowFitsItsScreen_data()
    {
        QTest::addColumn<QSize>("screen");
        QTest::newRow("low") << QSize(1280, 720);
        QTest::newRow("1920x1080 at ratio 2") << QSize(960, 540);
        QTest::newRow("roomy") << QSize(2560, 1440);
    }

    void windowFitsItsScreen()
    {
        QFETCH(QSize, screen);
        const ScreenFit fit(screen);
        const QSize framed = fit.size + QSize(2, 24); // of a lean desktop
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
        Workbench workbench(SimulationClock::Drive::Exchanges, 1);
        QCOMPARE(workbench.loadPlugin(FIXTURE_FOLDER "/minimal_container.so"), QString());
        MainWindow window(&workbench);
        ContainerInterface *const container = window.addContainer();
        container->setMinimumSize(700, 400);
        window.openContainer(container);
        window.show();
        window.resize(window.minimumSize());
        QCoreApplication::processEvents();
        QVERIFY(container->width() >= 700 && container->height() >= 400);
        const auto *const scrollArea = window.findChild<QMdiArea *>()->findChild<QScrollArea *>();
        QVERIFY(scrollArea->verticalScrollBar()->maximum() > 0);
    }

    void motorsMoveWhileNobodyReadsThem()
    {
        Workbench byWallClock(SimulationClock::Drive::WallClock, 14);
        Workbench byExchanges(SimulationClock::Drive::Exchanges, 14);
        QTRY_VERIFY(byWallClock.modules().simulatedMs() > 2 * ModuleRack::catchUpIntervalMs);
        QCOMPARE(byExchanges.modules().simulatedMs(), qint64(0));
    }

    void everythingEndsInOrder()
    {
        // A second file with a class of the same name: their containers share settings, so their names must differ.
        const QString copy = temporaryPath("copy.so");
        QVERIFY(QFile::copy(FIXTURE_FOLDER "/minimal_container.so", copy));
        auto workbench = std::make_unique<Workbench>(SimulationClock::Drive::Exchanges, 1);
        QCOMPARE(workbench->loadPlugin(FIXTURE_FOLDER "/minimal_container.so"), QString());
        QVERIFY(!workbench->loadPlugin(FIXTURE_FOLDER "/wrong_object.so").isEmpty());
        QCOMPARE(workbench->loadPlugin(copy), QString());
        auto window = std::make_unique<MainWindow>(workbench.get());
        QVERIFY(window->addContainer(0) != nullptr && window->addContainer(2) == nullptr);
        ContainerInterface *const second = window->addContainer(1);
        QCOMPARE(second->name(), QStringLiteral("MinimalContainer 2"));
        window->openContainer(second);
        window->show();
        QVERIFY(window->findChild<QMdiArea *>()->subWindowList().constFirst()->windowTitle().endsWith("(2)"));
        window.reset(); // with a container window still open
        QCOMPARE(messages(QtInfoMsg), QStringList());
        workbench.reset();
        const QStringList ends = {"root destroyed", "file unmapped"};
        QCOMPARE(messages(QtInfoMsg),
                 QStringList({"MinimalContainer 1 destroyed", "MinimalContainer 2 destroyed"}) + ends + ends);
    }
};

GUARDED_TEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
