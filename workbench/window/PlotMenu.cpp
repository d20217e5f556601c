#include "window/PlotMenu.h"

#include "PlotterWindow.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>

namespace
{

constexpr int curveCount = 4; // with keys of their own

std::function<QAbstractButton *(const QWidget &)> byName(const QString &name)
{
    return [name](const QWidget &container) { return container.findChild<QAbstractButton *>(name); };
}

} // namespace

PlotMenu::PlotMenu(QWidget *parent) : QMenu(parent)
{
    setTitle(tr("&Plot"));
    for (int curve = 0; curve < curveCount; ++curve) {
        const QByteArray shortcut = "Ctrl+" + QByteArray::number(curve + 1);
        add(tr("Curve &%1").arg(curve + 1), shortcut.constData(),
            tr("Switch curve %1 on or off, as its box above the plot does").arg(curve + 1),
            [curve](const QWidget &container) -> QAbstractButton * {
                return PlotterWindow::curveBoxes(&container).value(curve);
            });
    }
    addSeparator();
    add(tr("&Log to File"), "Ctrl+L", tr("Record every new point into a file, or stop that"),
        byName(PlotterWindow::logBoxName()));
    add(tr("&Export Table"), "Ctrl+Shift+T", tr("Show the collected points as a table that can be copied and saved"),
        byName(PlotterWindow::buttonName(PlotterWindow::Job::Export)));
    add(tr("Save &Screenshot"), "Ctrl+Shift+P", tr("Save the plot as a picture; Messages says where it is"),
        byName(PlotterWindow::buttonName(PlotterWindow::Job::Screenshot)));
    addCopy();
    addSeparator();
    add(tr("&Clear Buffer"), "Ctrl+Shift+K", tr("Forget the collected points of all curves"),
        byName(PlotterWindow::buttonName(PlotterWindow::Job::Clear)));
    add(tr("&Refresh Modules"), "F5", tr("Read the list of modules again; what was chosen goes on"),
        byName(PlotterWindow::buttonName(PlotterWindow::Job::Refresh)));
    connect(this, &QMenu::aboutToShow, this, &PlotMenu::refresh);
    setContainer(nullptr);
}

void PlotMenu::setContainer(QWidget *container)
{
    m_container = container;
    refresh();
}

void PlotMenu::add(const QString &text, const char *shortcut, const QString &tip, const Finder &button)
{
    QAction *const newAction = addAction(text);
    newAction->setShortcut(QKeySequence(QLatin1String(shortcut)));
    newAction->setStatusTip(tip);
    newAction->setWhatsThis(tip);
    connect(newAction, &QAction::triggered, this, [this, button] {
        QAbstractButton *const found = m_container.isNull() ? nullptr : button(*m_container);
        if (found != nullptr) {
            found->click();
        }
        refresh();
    });
    m_entries.append({newAction, button});
}

void PlotMenu::addCopy()
{
    QAction *const copyAction = addAction(tr("Copy &Picture"), this, &PlotMenu::copyPicture);
    copyAction->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+C")));
    copyAction->setStatusTip(tr("Copy the plot as a picture, to paste it into another program"));
    copyAction->setWhatsThis(copyAction->statusTip());
    m_entries.append(Entry{copyAction, {}});
}

void PlotMenu::copyPicture() const
{
    if (QWidget *const plot =
            m_container.isNull() ? nullptr : m_container->findChild<QWidget *>(PlotterWindow::plotName())) {
        QApplication::clipboard()->setPixmap(plot->grab());
    }
}

void PlotMenu::refresh()
{
    const bool hasPlot =
        !m_container.isNull() && m_container->findChild<QWidget *>(PlotterWindow::plotName()) != nullptr;
    for (const Entry &entry : qAsConst(m_entries)) {
        const QAbstractButton *const button =
            entry.button && !m_container.isNull() ? entry.button(*m_container) : nullptr;
        entry.action->setEnabled(entry.button ? button != nullptr && button->isEnabled() : hasPlot);
        entry.action->setCheckable(button != nullptr && button->isCheckable());
        entry.action->setChecked(button != nullptr && button->isChecked());
    }
}
