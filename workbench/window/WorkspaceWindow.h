#pragma once

#include <QMdiSubWindow>

/**
 * A window of the workspace that lets the Tab key leave for the panels around it, and come back.
 *
 * The toolkit keeps it inside, where who has no mouse would never get to the panels. Owned by the workspace.
 */
class WorkspaceWindow : public QMdiSubWindow
{
    Q_OBJECT

public:
    using QMdiSubWindow::QMdiSubWindow;

protected:
    bool focusNextPrevChild(bool next) override;
};
