#include "window/ShortcutList.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QRegularExpression>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace
{

/// Without the mark of its key: "&&" stays an ampersand.
QString plainText(QString text)
{
    static const QRegularExpression mark(QStringLiteral("&(.)"));
    return text.replace(mark, QStringLiteral("\\1"));
}

} // namespace

ShortcutList::ShortcutList(QWidget *window) : QDialog(window)
{
    setWindowTitle(tr("Keyboard Shortcuts"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto *const table = new QTreeWidget;
    table->setAccessibleName(windowTitle());
    table->setWhatsThis(tr("All keys of the workbench. In the plot, - and + go through the zooms and the arrow keys "
                           "move the view."));
    table->setHeaderLabels({tr("Keys"), tr("Command"), tr("What it does")});
    table->setRootIsDecorated(false);
    table->setUniformRowHeights(true);
    table->setAlternatingRowColors(true);
    const QList<QAction *> actions = window->findChildren<QAction *>();
    for (const QAction *const action : actions) {
        const QList<QKeySequence> shortcuts = action->shortcuts(); // some commands have more than one
        for (const QKeySequence &keys : shortcuts) {
            new QTreeWidgetItem(
                table, {keys.toString(QKeySequence::NativeText), plainText(action->text()), action->statusTip()});
        }
    }
    table->sortItems(0, Qt::AscendingOrder);
    table->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table->setCurrentItem(table->topLevelItem(0));
    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *const layout = new QVBoxLayout(this);
    layout->addWidget(table, 1);
    layout->addWidget(buttons);
    constexpr QSize wanted(760, 520); // widget pixels
    resize(wanted.boundedTo(window->size()));
}
