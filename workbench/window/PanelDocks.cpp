#include "window/PanelDocks.h"

#include "logging/Recordings.h"
#include "window/ExchangePanel.h"
#include "window/MessagePanel.h"
#include "window/ModulePanel.h"
#include "window/RecordingPanel.h"
#include "window/ScreenFit.h"
#include "window/Workbench.h"

#include <QAction>
#include <QDockWidget>
#include <QMainWindow>
#include <QScrollArea>

namespace
{

// Widget pixels.
constexpr int minimumBottomHeight = 130;
constexpr int maximumBottomHeight = 220;

/// For those who came by a key: the panel's first control is where its keys are.
void focusFirst(const QWidget &panel)
{
    const QList<QWidget *> widgets = panel.findChildren<QWidget *>();
    for (QWidget *const widget : widgets) {
        if ((widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && widget->isVisible() && widget->isEnabled() &&
            qobject_cast<QScrollArea *>(widget) == nullptr) {
            widget->setFocus(Qt::ShortcutFocusReason);
            return;
        }
    }
}

} // namespace

PanelDocks::PanelDocks(QMainWindow *window, Workbench *workbench, const AnswerWatch *answers, Recordings *recordings)
    : QObject(window), m_window(window)
{
    m_modules = add(Qt::RightDockWidgetArea, tr("Modules"), "moduleDock",
                    new ModulePanel(&workbench->modules(), answers), "Ctrl+M");
    window->resizeDocks({m_modules}, {1}, Qt::Horizontal); // as narrow as it can be: the width is for the plots
    m_messages = add(Qt::BottomDockWidgetArea, tr("Messages"), "messageDock", new MessagePanel(&workbench->messages()),
                     "Ctrl+G");
    m_recording =
        add(Qt::BottomDockWidgetArea, tr("Recording"), "recordingDock", new RecordingPanel(recordings), "Ctrl+R");
    m_exchanges = add(Qt::BottomDockWidgetArea, tr("Exchanges"), "exchangeDock",
                      new ExchangePanel(&workbench->modules(), answers), "Ctrl+E");
    window->tabifyDockWidget(m_messages, m_recording);
    window->tabifyDockWidget(m_recording, m_exchanges);
    m_messages->raise();
    window->setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    connect(recordings, &Recordings::failed, m_recording, [this] {
        m_recording->show();
        m_recording->raise();
    });
}

void PanelDocks::fit(const QSize &available)
{
    const ScreenFit fit(available);
    const int height = qBound(minimumBottomHeight, fit.size.height() / 5, maximumBottomHeight);
    m_window->resizeDocks({m_messages}, {height}, Qt::Vertical);
    m_modules->setVisible(fit.showsModules);
    for (QDockWidget *const dock : {m_messages, m_recording, m_exchanges}) {
        dock->setVisible(fit.showsMessages); // the status bar shows the essentials
    }
}

QList<QAction *> PanelDocks::actions() const
{
    return m_actions;
}

QDockWidget *PanelDocks::add(Qt::DockWidgetArea area, const QString &title, const char *name, QWidget *panel,
                             const char *shortcut)
{
    auto *const dock = new QDockWidget(title);
    dock->setObjectName(QLatin1String(name));
    dock->setWidget(panel);
    m_window->addDockWidget(area, dock);
    // Not the dock's own action, which hides a panel that is behind another one.
    auto *const action = new QAction(title, this);
    action->setCheckable(true);
    action->setShortcut(QKeySequence(QLatin1String(shortcut)));
    action->setStatusTip(tr("Bring the panel to the front, or hide it when it is there"));
    action->setWhatsThis(action->statusTip());
    connect(dock, &QDockWidget::visibilityChanged, action, &QAction::setChecked); // false also for one that is behind
    connect(action, &QAction::triggered, dock, [dock](bool on) {
        dock->setVisible(on);
        if (on) {
            dock->raise();
            focusFirst(*dock->widget());
        }
    });
    m_actions.append(action);
    return dock;
}
