#include "window/WorkspaceWindow.h"

#include <QAction>
#include <QMenu>
#include <QScrollArea>

WorkspaceWindow::WorkspaceWindow(QWidget *content) : m_content(content)
{
    auto *const scrollArea = new QScrollArea;
    scrollArea->setFrameShape(QFrame::NoFrame);
    scrollArea->setWidgetResizable(true);
    scrollArea->setFocusPolicy(Qt::NoFocus);
    scrollArea->setWindowTitle(content->windowTitle());
    scrollArea->setWidget(content);
    setWidget(scrollArea);
    // The main window has an action with the same keys, for whichever window is in front.
    const QList<QAction *> actions = systemMenu() == nullptr ? QList<QAction *>() : systemMenu()->actions();
    for (QAction *const action : actions) {
        action->setShortcuts(QList<QKeySequence>());
    }
}

WorkspaceWindow *WorkspaceWindow::of(const QWidget *content)
{
    for (QWidget *widget = content->parentWidget(); widget != nullptr; widget = widget->parentWidget()) {
        if (auto *const window = qobject_cast<WorkspaceWindow *>(widget)) {
            return window;
        }
    }
    return nullptr;
}

QSize WorkspaceWindow::usableSize() const
{
    const QSize frame = size() - contentsRect().size();
    return m_content.isNull() ? frame : m_content->minimumSizeHint() + frame;
}

void WorkspaceWindow::closeEvent(QCloseEvent *event)
{
    if (!m_content.isNull()) {
        m_content->close();
    }
    QMdiSubWindow::closeEvent(event);
}

bool WorkspaceWindow::focusNextPrevChild(bool next)
{
    QWidget *const start = window()->focusWidget() == nullptr ? this : window()->focusWidget();
    const auto neighbour = [next](const QWidget *widget) {
        return next ? widget->nextInFocusChain() : widget->previousInFocusChain();
    };
    const auto isStop = [](const QWidget *widget) {
        return (widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && widget->isVisible() && widget->isEnabled() &&
               widget->focusProxy() == nullptr && qobject_cast<const QMdiSubWindow *>(widget) == nullptr;
    };
    for (QWidget *widget = neighbour(start); widget != start; widget = neighbour(widget)) {
        if (isStop(widget) && widget->window() == window()) {
            widget->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    }
    return false;
}
