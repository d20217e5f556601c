#include "MainWindow.h"
#include "GuardedTest.h"
#include "HintBar.h"
#include "SimulatedModule.h"
#include "Workbench.h"

#include "host/ContainerInterface.h"

#include <QAction>
#include <QCheckBox>
#include <QDockWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QToolBar>
#include <QToolButton>

#include <memory>

/// The main window with a small plugin: opening, closing, modules that come and go, and the order of the end.
class MainWindowTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void toolBarOpensClosesAndReopens();
    void panelPlugsModulesInAndOut();
    void rackRemembersWhatIsTakenOut();
    void containersOfSeveralPluginsStandSideBySide();
    void everythingEndsInOrder();
    void closedHintStaysAway();

private:
    static QString loadFixture(Workbench &workbench)
    {
        return workbench.loadPlugin(QStringLiteral(FIXTURE_FOLDER "/minimal_container.so"));
    }
    static SceneModule module(const char *kind, const char *key)
    {
        return {QString::fromLatin1(kind), QString::fromLatin1(key), {}};
    }
};

void MainWindowTest::toolBarOpensClosesAndReopens()
{
    Workbench workbench(SimulationClock::Drive::Exchanges, 1);
    QCOMPARE(loadFixture(workbench), QString());
    MainWindow window(&workbench);
    ContainerInterface *const container = window.addContainer();
    QVERIFY(container != nullptr);
    window.show();

    const auto *const toolBar = window.findChild<QToolBar *>();
    const auto *const workspace = window.findChild<QMdiArea *>();
    QVERIFY(toolBar != nullptr && workspace != nullptr);
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
    window.openContainer(container);
    QCOMPARE(window.resizeContainer(container, QSize(321, 234)), QSize(321, 234));
    QCOMPARE(container->size(), QSize(321, 234));
}

void MainWindowTest::panelPlugsModulesInAndOut()
{
    Workbench workbench(SimulationClock::Drive::Exchanges, 1);
    QCOMPARE(loadFixture(workbench), QString());
    QVERIFY(workbench.modules().add(module("servo-1", "S/One"), 1));
    MainWindow window(&workbench);
    window.openContainer(window.addContainer());
    window.show();
    QVERIFY(workbench.modules().add(module("io-block", "S/Two"), 1)); // the panel follows

    QHash<QString, QCheckBox *> boxes;
    const auto *const dock = window.findChild<QDockWidget *>(QStringLiteral("moduleDock"));
    const QList<QCheckBox *> found = dock->findChildren<QCheckBox *>();
    for (QCheckBox *const box : found) {
        boxes.insert(box->accessibleName(), box);
    }
    QCOMPARE(boxes.size(), 6);
    const ModuleRack &modules = workbench.modules();
    QCheckBox *const pluggedIn = boxes.value(QStringLiteral("S/One: Plugged in"));
    QVERIFY(pluggedIn != nullptr);
    QTest::mouseClick(boxes.value(QStringLiteral("S/One: Silent")), Qt::LeftButton, {}, QPoint(8, 8));
    QVERIFY(modules.isSilent(0) && !modules.isSilent(1));
    QTest::mouseClick(pluggedIn, Qt::LeftButton, {}, QPoint(8, 8));
    QVERIFY(!modules.isPluggedIn(0) && modules.isPluggedIn(1));
    QVERIFY(!boxes.value(QStringLiteral("S/One: Moving"))->isEnabled());
    pluggedIn->setFocus();
    QTest::keyClick(pluggedIn, Qt::Key_Space);
    QVERIFY(modules.isPluggedIn(0));
    QCOMPARE(messages(QtInfoMsg).filter(QStringLiteral("module notice")).size(), 3);
}

void MainWindowTest::rackRemembersWhatIsTakenOut()
{
    PluginHandler handler;
    ModuleRack rack(&handler, SimulationClock::Drive::Exchanges, 1);
    SceneModule described = module("stepper-3", "S/One");
    described.motions[1].amplitude = 123.0;
    QVERIFY(rack.add(described, 1));
    QVERIFY(!rack.add(described, 1));
    QVERIFY(!rack.add(module("no-such-kind", "S/Two"), 1));
    QCOMPARE(rack.count(), 1);

    rack.setMoving(0, false);
    rack.setSilent(0, true);
    rack.setPluggedIn(0, false);
    QVERIFY(handler.getModulePlugin(QStringLiteral("S/One")) == nullptr);
    rack.setMoving(0, true);
    rack.setPluggedIn(0, true);
    const auto *const again = qobject_cast<SimulatedModule *>(handler.getModulePlugin(QStringLiteral("S/One")));
    QVERIFY(again != nullptr);
    QVERIFY(again->isMoving() && again->isSilent());
    QCOMPARE(again->motion(1).amplitude, 123.0);
}

void MainWindowTest::containersOfSeveralPluginsStandSideBySide()
{
    // A second file with a class of the same name: their containers share settings, so their names must differ.
    const QString copy = temporaryPath(QStringLiteral("copy.so"));
    QVERIFY(QFile::copy(QStringLiteral(FIXTURE_FOLDER "/minimal_container.so"), copy));
    Workbench workbench(SimulationClock::Drive::Exchanges, 1);
    QCOMPARE(loadFixture(workbench), QString());
    QVERIFY(!workbench.loadPlugin(QStringLiteral(FIXTURE_FOLDER "/tool_plugin.so")).isEmpty());
    QCOMPARE(workbench.loadPlugin(copy), QString());
    QCOMPARE(workbench.pluginCount(), 2);
    QCOMPARE(workbench.pluginPath(1), copy);
    MainWindow window(&workbench);
    ContainerInterface *const first = window.addContainer(0);
    ContainerInterface *const second = window.addContainer(1);
    QVERIFY(first != nullptr && second != nullptr && window.addContainer(2) == nullptr);
    QVERIFY(first->metaObject() != second->metaObject());
    QCOMPARE(first->name(), QStringLiteral("MinimalContainer 1"));
    QCOMPARE(second->name(), QStringLiteral("MinimalContainer 2"));

    window.show();
    const auto *const fileMenu = window.menuBar()->actions().constFirst()->menu();
    fileMenu->actions().at(1)->trigger(); // a new one of the second plugin
    QCOMPARE(workbench.containers().size(), 3);
    QVERIFY(workbench.containers().constLast()->metaObject() == second->metaObject());
    QCOMPARE(window.findChild<QMdiArea *>()->subWindowList().constFirst()->windowTitle(),
             QStringLiteral("Minimal (3)"));
}

void MainWindowTest::everythingEndsInOrder()
{
    auto workbench = std::make_unique<Workbench>(SimulationClock::Drive::Exchanges, 1);
    QCOMPARE(loadFixture(*workbench), QString());
    QVERIFY(workbench->modules().add(module("servo-1", "S/One"), 1));
    auto window = std::make_unique<MainWindow>(workbench.get());
    QVERIFY(window->addContainer() != nullptr);
    window->openContainer(window->addContainer());
    window->show();
    window.reset(); // with a container window still open
    QCOMPARE(messages(QtInfoMsg), QStringList());
    workbench.reset();
    const QStringList expected = {QStringLiteral("MinimalContainer 1 destroyed"),
                                  QStringLiteral("MinimalContainer 2 destroyed"), QStringLiteral("root destroyed"),
                                  QStringLiteral("file unmapped")};
    QCOMPARE(messages(QtInfoMsg), expected);
}

void MainWindowTest::closedHintStaysAway()
{
    Workbench workbench(SimulationClock::Drive::Exchanges, 1);
    for (int run = 0; run < 2; ++run) {
        MainWindow window(&workbench);
        window.showHint();
        window.show();
        const auto *const hint = window.findChild<HintBar *>();
        QCOMPARE(hint != nullptr, run == 0);
        if (hint != nullptr) {
            QTest::mouseClick(hint->findChild<QPushButton *>(), Qt::LeftButton);
            QVERIFY(!hint->isVisible());
        }
    }
}

GUARDED_TEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
