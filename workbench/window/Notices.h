#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QStringList>

class AnswerWatch;
class ContainerInterface;
class ContainerWindow;
class RecordingWatch;
class Recordings;
class SourceWatch;
class Workbench;

/**
 * Brings what is found out about modules, sources and recordings to where people look: the windows of the containers
 * that are concerned, and the messages.
 *
 * Nothing that is given is owned, and all of it has to outlive this. GUI thread.
 */
class Notices : public QObject
{
    Q_OBJECT

public:
    Notices(Workbench *workbench, const AnswerWatch *answers, Recordings *recordings, QObject *parent = nullptr);

    /// To be called at each opening of a container.
    void windowOpened(ContainerInterface *container, ContainerWindow *window, const QString &title);

private:
    struct Watched
    {
        QPointer<ContainerInterface> container;
        QPointer<ContainerWindow> window;
        SourceWatch *sources = nullptr; // a child of this
    };

    void noteModules();
    void noteAnswers();
    void refresh();
    void refresh(const Watched &watched);
    /// What is wrong with the modules that a container reads, and with its sources.
    QStringList troublesOf(const SourceWatch &sources) const;

    Workbench *const m_workbench;       // not owned
    const AnswerWatch *const m_answers; // not owned
    Recordings *const m_recordings;     // not owned
    QList<Watched> m_watched;
    QStringList m_pluggedIn;
};
