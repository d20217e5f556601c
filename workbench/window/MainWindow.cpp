#include "window/MainWindow.h"

#include "PlotterWindow.h"
#include "logging/Recordings.h"
#include "modules/AnswerWatch.h"
#include "window/AppearanceMenu.h"
#include "window/ContainerWindow.h"
#include "window/FileMenu.h"
#include "window/HelpMenu.h"
#include "window/HintBar.h"
#include "window/ModuleMenu.h"
#include "window/Notices.h"
#include "window/PanelDocks.h"
#include "window/PlotMenu.h"
#include "window/RecordingOpener.h"
#include "window/ScreenFit.h"
#include "window/StatusSummary.h"
#include "window/Workbench.h"
#include "window/Workspace.h"
#include "window/WorkspaceWindow.h"

#include "host/ContainerInterface.h"
#include "host/DynamicProperty.h"

#include <QAction>
#include <QApplication>
#include <QChildEvent>
#include <QCloseEvent>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>

namespace
{

constexpr int minimumWidthPixels = 640;
constexpr int minimumHeightPixels = 420;
constexpr int maximumShortcuts = 9; // Alt+1 to Alt+9

QSize availableSize()
{
    const QScreen *const screen = QGuiApplication::primaryScreen();
    return screen == nullptr ? QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX) : screen->availableSize();
}

} // namespace

MainWindow::MainWindow(Workbench *workbench, QWidget *parent)
    : QMainWindow(parent)
    , m_workbench(workbench)
    , m_workspace(new Workspace)
    , m_answers(new AnswerWatch(&workbench->modules(), this))
    , m_recordings(new Recordings(&workbench->messages(), &workbench->modules(), this))
{
    setWindowTitle(FileMenu::programTitle());
    setMinimumSize(minimumWidthPixels, minimumHeightPixels);

    m_workspace->setEmptyText(tr("No container is open.\nThe tool bar opens one, and so does Alt+1."));
    auto *const centre = new QWidget;
    auto *const layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_workspace, 1);
    setCentralWidget(centre);

    makeMenus();
    auto *const panels = new PanelDocks(this, workbench, m_answers, m_recordings);
    m_viewMenu->addActions(panels->actions());
    const QSize available = availableSize();
    panels->fit(available);
    resize(ScreenFit(available).size);
    new StatusSummary(statusBar(), workbench, m_answers, m_recordings, this);
    m_notices = new Notices(workbench, m_answers, m_recordings, this);
    connect(m_workspace, &QMdiArea::subWindowActivated, this, &MainWindow::showActive);
}

MainWindow::~MainWindow()
{
    closeContainers();
}

ContainerInterface *MainWindow::addContainer(int plugin)
{
    ContainerInterface *const container = m_workbench->addContainer(plugin);
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
    m_recordings->windowOpened(container, titleOf(container));
    m_notices->windowOpened(container, window, titleOf(container));
    connect(window, &ContainerWindow::finished, m_recordings,
            [this, container] { m_recordings->windowClosed(container); });
    if (!window->isForWorkspace()) {
        window->setParent(this, window->windowFlags());
        window->show();
        return;
    }
    auto *const subWindow = new WorkspaceWindow(window);
    subWindow->setAttribute(Qt::WA_DeleteOnClose);
    m_workspace->addSubWindow(subWindow);
    subWindow->setWindowIcon(window->windowIcon());
    connect(window, &ContainerWindow::finished, subWindow, &QMdiSubWindow::close);
    subWindow->showMaximized();
}

/// Alt+1 is the first container that there is, and so on.
void MainWindow::numberShortcuts()
{
    int number = 0;
    const QList<ContainerInterface *> containers = m_workbench->containers();
    for (ContainerInterface *const container : containers) {
        QAction *const action = m_actions.value(container);
        if (action != nullptr && ++number <= maximumShortcuts) {
            action->setShortcut(QKeySequence(QStringLiteral("Alt+%1").arg(number)));
        }
    }
}

void MainWindow::removeContainer(ContainerInterface *container)
{
    if (const QPointer<ContainerWindow> window = m_windows.take(container)) {
        window->close();
    }
    delete m_actions.take(container);
    m_recordings->containerRemoved(container);
    m_workbench->removeContainer(container);
    for (auto action = m_actions.cbegin(); action != m_actions.cend(); ++action) {
        action.value()->setText(titleOf(action.key())); // those behind it count one less
    }
    numberShortcuts();
    showActive();
}

WindowPlace MainWindow::placeOf(ContainerInterface *container) const
{
    WindowPlace place;
    const QPointer<ContainerWindow> window = m_windows.value(container);
    if (window.isNull() || window->container() == nullptr) {
        place.state = WindowPlace::State::Closed;
        return place;
    }
    const WorkspaceWindow *const subWindow = WorkspaceWindow::of(window);
    const QWidget *const outer = subWindow != nullptr ? static_cast<const QWidget *>(subWindow) : window;
    if (outer->isMinimized()) {
        place.state = WindowPlace::State::Minimised;
    } else if (!outer->isMaximized()) {
        place.state = WindowPlace::State::Normal;
        place.geometry = QRect(outer->pos(), outer->size());
    }
    return place;
}

void MainWindow::setPlace(ContainerInterface *container, const WindowPlace &place)
{
    const QPointer<ContainerWindow> window = m_windows.value(container);
    if (window.isNull()) {
        return;
    }
    WorkspaceWindow *const subWindow = WorkspaceWindow::of(window);
    QWidget *const outer = subWindow != nullptr ? static_cast<QWidget *>(subWindow) : window;
    switch (place.state) {
    case WindowPlace::State::Maximised:
        outer->showMaximized();
        break;
    case WindowPlace::State::Normal:
        outer->showNormal();
        if (place.geometry.isValid()) {
            outer->move(place.geometry.topLeft());
            outer->resize(place.geometry.size());
        }
        break;
    case WindowPlace::State::Minimised:
        outer->showMinimized();
        break;
    case WindowPlace::State::Closed:
        window->close();
        break;
    }
}

ContainerInterface *MainWindow::frontContainer() const
{
    const QMdiSubWindow *const front = m_workspace->currentSubWindow();
    for (auto window = m_windows.cbegin(); window != m_windows.cend(); ++window) {
        if (front != nullptr && !window.value().isNull() && WorkspaceWindow::of(window.value()) == front) {
            return window.key();
        }
    }
    return nullptr;
}

QSize MainWindow::resizeContainer(ContainerInterface *container, const QSize &size)
{
    const QPointer<ContainerWindow> window = m_windows.value(container);
    if (window.isNull()) {
        return {};
    }
    WorkspaceWindow *const subWindow = WorkspaceWindow::of(window);
    QWidget *const outer = subWindow != nullptr ? static_cast<QWidget *>(subWindow) : window;
    outer->showNormal();
    // More than once: a layout that was not active before may still be wrong about its own frame, and scroll bars
    // appear and disappear meanwhile.
    constexpr int maximumAttempts = 6;
    for (int i = 0; i < maximumAttempts && (i == 0 || container->size() != size); ++i) {
        outer->resize(outer->size() + size - container->size());
        QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    }
    return container->size();
}

void MainWindow::showHint()
{
    const QList<ContainerInterface *> containers = m_workbench->containers();
    const bool hasPlot = std::any_of(containers.cbegin(), containers.cend(), [](const QWidget *container) {
        return container->findChild<QWidget *>(PlotterWindow::plotName()) != nullptr;
    });
    if (HintBar::wasClosed() || !hasPlot) { // it is about plots
        return;
    }
    if (auto *const layout = qobject_cast<QVBoxLayout *>(centralWidget()->layout())) {
        layout->insertWidget(0, new HintBar);
    }
}

void MainWindow::offerAppearance(const QStringList &languages)
{
    new AppearanceMenu(this, m_viewMenu, languages);
}

FileMenu *MainWindow::fileMenu() const
{
    return m_fileMenu;
}

Recordings *MainWindow::recordings() const
{
    return m_recordings;
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (!m_fileMenu->mayEnd()) {
        event->ignore();
        return;
    }
    closeContainers();
    event->accept();
}

void MainWindow::childEvent(QChildEvent *event)
{
    // The bars that switch between panels in one place come and go as panels are moved.
    if (event->type() == QEvent::ChildPolished && event->child()->inherits("QTabBar")) {
        static_cast<QWidget *>(event->child())->setAccessibleName(tr("Panels"));
    }
    QMainWindow::childEvent(event);
}

void MainWindow::makeMenus()
{
    m_toolBar = addToolBar(tr("Containers"));
    m_toolBar->setObjectName(QStringLiteral("containerToolBar"));
    m_toolBar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);

    m_fileMenu = new FileMenu(this, m_workbench);
    menuBar()->addMenu(m_fileMenu->menu());
    auto *const opener = new RecordingOpener(m_workbench, this);
    m_fileMenu->setRecordingOpener([opener](const QString &path) { opener->openOrAsk(path); });

    m_viewMenu = menuBar()->addMenu(tr("&View"));
    QAction *const toolBarAction = m_toolBar->toggleViewAction();
    toolBarAction->setText(tr("&Tool Bar"));
    toolBarAction->setStatusTip(tr("Show or hide the tool bar with the containers"));
    m_viewMenu->addAction(toolBarAction);

    m_plotMenu = new PlotMenu(this);
    menuBar()->addMenu(m_plotMenu);

    menuBar()->addMenu(new ModuleMenu(&m_workbench->modules(), this));

    m_containerMenu = menuBar()->addMenu(tr("&Containers"));
    const auto add = [this](const QString &text, const QString &tip) {
        QAction *const action = m_containerMenu->addAction(text);
        action->setStatusTip(tip);
        return action;
    };
    connect(add(tr("&Tile"), tr("Show all windows beside and below one another")), &QAction::triggered, m_workspace,
            &Workspace::tile);
    connect(add(tr("C&ascade"), tr("Show all windows one behind the other")), &QAction::triggered, m_workspace,
            &QMdiArea::cascadeSubWindows);
    QAction *const nextAction = add(tr("Ne&xt"), tr("Bring the next window to the front"));
    nextAction->setShortcut(QKeySequence(QStringLiteral("Ctrl+F6")));
    connect(nextAction, &QAction::triggered, m_workspace, &QMdiArea::activateNextSubWindow);
    QAction *const closeAction = add(tr("&Close"), tr("Close the container's window; its curves and sources are kept"));
    closeAction->setShortcuts({QKeySequence(QStringLiteral("Ctrl+W")), QKeySequence(QStringLiteral("Ctrl+F4"))});
    connect(closeAction, &QAction::triggered, m_workspace, &QMdiArea::closeActiveSubWindow);
    connect(
        add(tr("&Remove"), tr("Close the container's window for good, with its curves and its place in the tool bar")),
        &QAction::triggered, this, [this] {
            if (ContainerInterface *const front = frontContainer()) {
                removeContainer(front);
            }
        });
    m_containerMenu->addSeparator();
    menuBar()->addMenu(new HelpMenu(this));
}

void MainWindow::offerContainer(ContainerInterface *container)
{
    const int number = m_workbench->containers().size();
    const QString title = titleOf(container);
    auto *const action = new QAction(title, this);
    if (container->testAttribute(Qt::WA_SetWindowIcon)) { // else it would show the application's, which is another's
        action->setIcon(container->windowIcon());
    }
    action->setStatusTip(tr("Open %1, or bring its window to the front").arg(title));
    action->setToolTip(action->statusTip());
    action->setCheckable(true); // checked while it is in front
    m_actions.insert(container, action);
    numberShortcuts();
    connect(action, &QAction::triggered, this, [this, container] {
        openContainer(container);
        showActive(); // a click on a checked action unchecks it
    });
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
    const int number = m_workbench->numberOf(container);
    return number < 2 ? container->windowTitle() : tr("%1 (%2)").arg(container->windowTitle()).arg(number);
}

void MainWindow::bringToFront(ContainerInterface *container, ContainerWindow *window)
{
    WorkspaceWindow *const subWindow = WorkspaceWindow::of(window);
    if (subWindow == nullptr) {
        container->showPlugin();
        return;
    }
    if (subWindow->isMinimized()) {
        subWindow->showNormal();
    }
    m_workspace->setActiveSubWindow(subWindow);
}

void MainWindow::showActive()
{
    const QMdiSubWindow *const active = m_workspace->activeSubWindow();
    QWidget *front = nullptr;
    for (auto window = m_windows.cbegin(); window != m_windows.cend(); ++window) {
        const bool isFront = !window.value().isNull() && window.value()->container() != nullptr &&
                             WorkspaceWindow::of(window.value()) == active && active != nullptr;
        if (QAction *const action = m_actions.value(window.key())) {
            action->setChecked(isFront);
        }
        front = isFront ? window.key() : front;
    }
    m_plotMenu->setContainer(front);
}

void MainWindow::closeContainers()
{
    for (const QPointer<ContainerWindow> &window : qAsConst(m_windows)) {
        if (!window.isNull()) {
            window->close();
        }
    }
}
