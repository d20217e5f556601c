#include "window/MainWindow.h"
#include "GuardedTest.h"
#include "window/Workbench.h"

#include "host/ContainerInterface.h"

#include <QMdiArea>
#include <QMdiSubWindow>
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
