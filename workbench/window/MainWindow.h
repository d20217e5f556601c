#pragma once

#include "setup/Scene.h"

#include <QHash>
#include <QMainWindow>
#include <QPointer>

class AnswerWatch;
class ContainerInterface;
class ContainerWindow;
class FileMenu;
class Notices;
class PlotMenu;
class QAction;
class QMenu;
class QToolBar;
class Recordings;
class Workbench;
class Workspace;

/**
 * The workbench's main window: a workspace for container windows, the tool bar that opens them, and panels around it
 * for the modules, the messages of the logger, the recordings and the exchanges.
 *
 * Closes all container windows when it closes or dies, so that the containers leave them alive. The workbench is not
 * owned, has its plugins loaded before and has to outlive the window. GUI thread.
 */
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(Workbench *workbench, QWidget *parent = nullptr);
    ~MainWindow() override;

    /// Makes one more container of a plugin and a way to open it; null when the plugin makes none.
    ContainerInterface *addContainer(int plugin = 0);

    /// Opens the container's window, or brings the one that it has to the front.
    void openContainer(ContainerInterface *container);

    /// Closes the container's window, and destroys the container.
    void removeContainer(ContainerInterface *container);

    /// Where the container's window is; closed when it has none.
    WindowPlace placeOf(ContainerInterface *container) const;
    /// Moves the container's window there, as far as there is room; without effect on one that has none.
    void setPlace(ContainerInterface *container, const WindowPlace &place);
    /// The container whose window is in front; null when all are closed.
    ContainerInterface *frontContainer() const;

    /**
     * Makes the window of an open container so large that the container itself is of \a size (widget pixels).
     * \return the size that the container got, which is larger when its minimum size is
     */
    QSize resizeContainer(ContainerInterface *container, const QSize &size);

    /// Shows the hint for newcomers above the workspace, unless it was closed once.
    void showHint();

    /// Offers colours and \a languages (codes) in the View menu.
    void offerAppearance(const QStringList &languages);

    /// The menu by which set-ups are opened and saved. Owned by the window.
    FileMenu *fileMenu() const;

    /// What is known of the recordings of the containers that were opened. Owned by the window.
    Recordings *recordings() const;

protected:
    void closeEvent(QCloseEvent *event) override;
    void childEvent(QChildEvent *event) override;

private:
    void makeMenus();
    void offerContainer(ContainerInterface *container);
    void numberShortcuts();
    /// The container's own title, numbered from the second container of its kind on.
    QString titleOf(ContainerInterface *container) const;
    void bringToFront(ContainerInterface *container, ContainerWindow *window);
    /// Marks the container that is in front, and makes it the one that the plot menu is about.
    void showActive();
    void closeContainers();

    Workbench *const m_workbench; // not owned
    Workspace *const m_workspace;
    QToolBar *m_toolBar = nullptr;
    FileMenu *m_fileMenu = nullptr;
    QMenu *m_containerMenu = nullptr;
    QMenu *m_viewMenu = nullptr;
    AnswerWatch *const m_answers;
    Recordings *const m_recordings;
    Notices *m_notices = nullptr;
    PlotMenu *m_plotMenu = nullptr;
    QHash<ContainerInterface *, QPointer<ContainerWindow>> m_windows;
    QHash<ContainerInterface *, QAction *> m_actions;
};
