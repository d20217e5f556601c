#include "ChoiceTable.h"

#include <QKeyEvent>
#include <QPersistentModelIndex>

ChoiceTable::ChoiceTable(QWidget *parent) : QTableView(parent) {}

void ChoiceTable::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier) {
        event->accept();
        if (currentIndex().isValid() && !event->isAutoRepeat()) {
            emit clicked(currentIndex());
        }
        return;
    }
    const QPersistentModelIndex index = currentIndex();
    const QVariant checkState = index.data(Qt::CheckStateRole);
    QTableView::keyPressEvent(event);
    if (index.data(Qt::CheckStateRole) != checkState) {
        emit clicked(index);
    }
}
