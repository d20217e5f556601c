#include "MainWindow.h"

#include "ContainerWindow.h"
#include "HintBar.h"
#include "ModulePanel.h"
#include "Workbench.h"

#include "host/ContainerInterface.h"
#include "host/DynamicProperty.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

namespace
{

constexpr int startWidth = 1200;
constexpr int startHeight = 800;
constexpr int leastWidth = 640;
constexpr int leastHeight = 420;
constexpr int mostShortcuts = 9; // Alt+1 to Alt+9

} // namespace

MainWindow::MainWindow(Workbench *workbench, QWidget *parent)
    : QMainWindow(parent), m_workbench(workbench), m_workspace(new QMdiArea)
{
    setWindowTitle(tr("Container Workbench"));
    setMinimumSize(leastWidth, leastHeight);
    resize(startWidth, startHeight);

    m_workspace->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_workspace->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_workspace->setAccessibleName(tr("Workspace"));
    auto *const centre = new QWidget;
    auto *const layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_workspace, 1);
    setCentralWidget(centre);

    makeMenus();
    makeModuleDock();
    m_moduleCount = new QLabel;
    statusBar()->addPermanentWidget(m_moduleCount);
    connect(&m_workbench->modules(), &ModuleRack::changed, this, &MainWindow::showModuleCount);
    showModuleCount();
}

MainWindow::~MainWindow()
{
    closeContainers();
}

ContainerInterface *MainWindow::addContainer()
{
    ContainerInterface *const container = m_workbench->addContainer();
    if (container != nullptr) {
        offerContainer(container);
    }
    return container;
}

void MainWindow::openContainer(ContainerInterface *container)
{
    if (const QPointer<ContainerWindow> window = m_windows.value(container)) {
        if (window->container() != nullptr) {
            bringToFront(container, window);
            return;
        }
    }
    auto *const window = new ContainerWindow(container);
    window->setWindowTitle(titleOf(container));
    m_windows.insert(container, window);
    if (!window->isForWorkspace()) {
        window->setParent(this, window->windowFlags());
        window->show();
        return;
    }
    QMdiSubWindow *const subWindow = m_workspace->addSubWindow(window);
    subWindow->setWindowIcon(window->windowIcon());
    connect(window, &ContainerWindow::finished, subWindow, &QMdiSubWindow::close);
    subWindow->showMaximized();
}

QSize MainWindow::resizeContainer(ContainerInterface *container, const QSize &size)
{
    const QPointer<ContainerWindow> window = m_windows.value(container);
    if (window.isNull()) {
        return {};
    }
    QWidget *const outer = window->isForWorkspace() ? window->parentWidget() : window;
    outer->showNormal();
    // Twice, for a layout that has not been asked before may still be wrong about its own frame.
    for (int i = 0; i < 2; ++i) {
        outer->resize(outer->size() + size - container->size());
        QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    }
    return container->size();
}

void MainWindow::showHint()
{
    if (HintBar::wasClosed()) {
        return;
    }
    if (auto *const layout = qobject_cast<QVBoxLayout *>(centralWidget()->layout())) {
        layout->insertWidget(0, new HintBar);
    }
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    closeContainers();
    event->accept();
}

void MainWindow::makeMenus()
{
    m_toolBar = addToolBar(tr("Containers"));
    m_toolBar->setObjectName(QStringLiteral("containerToolBar"));
    m_toolBar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);

    QMenu *const fileMenu = menuBar()->addMenu(tr("&File"));
    QAction *const addAction = fileMenu->addAction(tr("&New Container"), this, [this] {
        if (ContainerInterface *const container = addContainer()) {
            openContainer(container);
        }
    });
    addAction->setShortcut(QKeySequence::New);
    addAction->setStatusTip(tr("Make one more container and open it"));
    QAction *const quitAction = fileMenu->addAction(tr("&Quit"), this, &QWidget::close);
    quitAction->setShortcut(QKeySequence(QStringLiteral("Ctrl+Q")));
    quitAction->setMenuRole(QAction::QuitRole);

    m_viewMenu = menuBar()->addMenu(tr("&View"));
    m_viewMenu->addAction(m_toolBar->toggleViewAction());

    m_containerMenu = menuBar()->addMenu(tr("&Containers"));
    m_containerMenu->addAction(tr("&Tile"), m_workspace, &QMdiArea::tileSubWindows);
    m_containerMenu->addAction(tr("C&ascade"), m_workspace, &QMdiArea::cascadeSubWindows);
    QAction *const closeAction = m_containerMenu->addAction(tr("&Close"), m_workspace, &QMdiArea::closeActiveSubWindow);
    closeAction->setStatusTip(tr("Close the container's window; its curves and sources are kept"));
    m_containerMenu->addSeparator();
}

void MainWindow::makeModuleDock()
{
    auto *const dock = new QDockWidget(tr("Simulated Modules"));
    dock->setObjectName(QStringLiteral("moduleDock"));
    dock->setWidget(new ModulePanel(&m_workbench->modules()));
    addDockWidget(Qt::RightDockWidgetArea, dock);
    resizeDocks({dock}, {1}, Qt::Horizontal); // as narrow as it can be: the width is for the plots
    QAction *const toggleAction = dock->toggleViewAction();
    toggleAction->setShortcut(QKeySequence(QStringLiteral("Ctrl+M")));
    m_viewMenu->addAction(toggleAction);
}

void MainWindow::offerContainer(ContainerInterface *container)
{
    const int number = m_workbench->containers().size();
    const QString title = titleOf(container);
    auto *const action = new QAction(container->windowIcon(), title, this);
    action->setStatusTip(tr("Open %1, or bring its window to the front").arg(title));
    action->setToolTip(action->statusTip());
    if (number <= mostShortcuts) {
        action->setShortcut(QKeySequence(QStringLiteral("Alt+%1").arg(number)));
    }
    connect(action, &QAction::triggered, this, [this, container] { openContainer(container); });
    m_containerMenu->addAction(action);
    if (container->property(DynamicProperty::ShowOnToolbar).toBool()) {
        m_toolBar->addAction(action);
    }
    if (number == 1) {
        QApplication::setWindowIcon(container->windowIcon());
    }
}

QString MainWindow::titleOf(ContainerInterface *container) const
{
    const int index = m_workbench->containers().indexOf(container);
    return index < 1 ? container->windowTitle() : tr("%1 (%2)").arg(container->windowTitle()).arg(index + 1);
}

void MainWindow::bringToFront(ContainerInterface *container, ContainerWindow *window)
{
    auto *const subWindow = qobject_cast<QMdiSubWindow *>(window->parentWidget());
    if (subWindow == nullptr) {
        container->showPlugin();
        return;
    }
    if (subWindow->isMinimized()) {
        subWindow->showNormal();
    }
    m_workspace->setActiveSubWindow(subWindow);
}

void MainWindow::closeContainers()
{
    for (const QPointer<ContainerWindow> &window : qAsConst(m_windows)) {
        if (!window.isNull()) {
            window->close();
        }
    }
}

void MainWindow::showModuleCount()
{
    const ModuleRack &modules = m_workbench->modules();
    int pluggedIn = 0;
    for (int index = 0; index < modules.count(); ++index) {
        pluggedIn += modules.isPluggedIn(index) ? 1 : 0;
    }
    m_moduleCount->setText(tr("%1 of %2 modules plugged in").arg(pluggedIn).arg(modules.count()));
}
