#include "window/WorkspaceWindow.h"

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
