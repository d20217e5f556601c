#pragma once

#include <QList>
#include <QObject>

class AnswerWatch;
class QAction;
class QDockWidget;
class QMainWindow;
class Recordings;
class Workbench;

/**
 * The panels around the workspace, in docks: modules, messages, recording and exchanges, and the actions that show them.
 *
 * The docks belong to the window. Nothing that is given is owned, and all of it has to outlive this. GUI thread.
 */
class PanelDocks : public QObject
{
    Q_OBJECT

public:
    /// \param window becomes the parent
    PanelDocks(QMainWindow *window, Workbench *workbench, const AnswerWatch *answers, Recordings *recordings);

    /// Hides the panels for which \a available, pixels as widgets count them, has no room.
    void fit(const QSize &available);

    /// One for each panel.
    QList<QAction *> actions() const;

private:
    QDockWidget *add(Qt::DockWidgetArea area, const QString &title, const char *name, QWidget *panel,
                     const char *shortcut);

    QMainWindow *const m_window; // not owned
    QDockWidget *m_modules = nullptr;
    QDockWidget *m_messages = nullptr;
    QDockWidget *m_recording = nullptr;
    QDockWidget *m_exchanges = nullptr;
    QList<QAction *> m_actions;
};
