#include "window/Workspace.h"

#include "window/WorkspaceWindow.h"

#include <QPainter>
#include <QScrollBar>

#include <algorithm>

Workspace::Workspace(QWidget *parent) : QMdiArea(parent)
{
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setAccessibleName(tr("Workspace"));
    setWhatsThis(tr("The windows of the containers. \"Tile\" in the menu \"Containers\" shows them all."));
}

void Workspace::setEmptyText(const QString &text)
{
    m_emptyText = text;
    viewport()->update();
}

void Workspace::tile()
{
    QList<QMdiSubWindow *> windows;
    QSize needed(1, 1);
    const QList<QMdiSubWindow *> all = subWindowList(CreationOrder);
    for (QMdiSubWindow *const window : all) {
        if (window->isHidden() || window->isMinimized()) {
            continue;
        }
        window->showNormal();
        windows.append(window);
        if (const auto *const framed = qobject_cast<const WorkspaceWindow *>(window)) {
            needed = needed.expandedTo(framed->usableSize());
        }
    }
    if (windows.isEmpty()) {
        return;
    }
    const QSize room = viewport()->size();
    const int fitting = std::max(1, room.width() / needed.width());
    // As many columns as rows, or one more.
    int columns = 1;
    while (columns * columns < windows.size()) {
        ++columns;
    }
    columns = std::min(columns, fitting);
    const int rows = (windows.size() + columns - 1) / columns;
    int width = room.width();
    if (rows * needed.height() > room.height()) {
        width -= verticalScrollBar()->sizeHint().width();
    }
    const QSize cell(std::max(needed.width(), width / columns), std::max(needed.height(), room.height() / rows));
    for (int index = 0; index < windows.size(); ++index) {
        const QPoint position(index % columns * cell.width(), index / columns * cell.height());
        windows.at(index)->setGeometry(QRect(position, cell));
    }
}

void Workspace::paintEvent(QPaintEvent *event)
{
    QMdiArea::paintEvent(event);
    if (subWindowList().isEmpty() && !m_emptyText.isEmpty()) {
        QPainter painter(viewport());
        painter.fillRect(viewport()->rect(), palette().window()); // on the area's own grey no text can be read
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(viewport()->rect(), int(Qt::AlignCenter) | Qt::TextWordWrap, m_emptyText);
    }
}
