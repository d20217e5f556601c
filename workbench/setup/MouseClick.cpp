#include "setup/MouseClick.h"

#include <QApplication>
#include <QCheckBox>
#include <QMouseEvent>
#include <QPointer>
#include <QStyle>
#include <QStyleOptionButton>

void MouseClick::at(QWidget *widget, const QPoint &position)
{
    const QPointer<QWidget> target(widget);
    const QPointF local(position);
    const QPointF global(widget->mapToGlobal(position));
    QMouseEvent press(QEvent::MouseButtonPress, local, local, global, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &press);
    if (target.isNull()) {
        return;
    }
    QMouseEvent release(QEvent::MouseButtonRelease, local, local, global, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(target, &release);
}

void MouseClick::on(QCheckBox *box)
{
    QStyleOptionButton option;
    option.initFrom(box);
    option.text = box->text();
    option.icon = box->icon();
    option.iconSize = box->iconSize();
    at(box, box->style()->subElementRect(QStyle::SE_CheckBoxClickRect, &option, box).center());
}
