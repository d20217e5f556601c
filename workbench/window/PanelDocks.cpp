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

namespace
{

constexpr int bottomHeight = 130; // widget pixels

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
    window->resizeDocks({m_messages}, {bottomHeight}, Qt::Vertical);
    window->setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    connect(recordings, &Recordings::failed, m_recording, [this] {
        m_recording->show();
        m_recording->raise();
    });
}

void PanelDocks::fit(const QSize &available)
{
    const ScreenFit fit(available);
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
    QAction *const toggleAction = dock->toggleViewAction();
    toggleAction->setShortcut(QKeySequence(QLatin1String(shortcut)));
    m_actions.append(toggleAction);
    return dock;
}
