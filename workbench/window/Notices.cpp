#include "window/Notices.h"

#include "logging/Recordings.h"
#include "logging/SourceWatch.h"
#include "modules/AnswerWatch.h"
#include "window/ContainerWindow.h"
#include "window/Workbench.h"

#include "host/ContainerInterface.h"

#include <QLocale>

namespace
{

QString sentence(const QString &line)
{
    return line.isEmpty() ? line : line.at(0).toUpper() + line.mid(1);
}

} // namespace

Notices::Notices(Workbench *workbench, const AnswerWatch *answers, Recordings *recordings, QObject *parent)
    : QObject(parent)
    , m_workbench(workbench)
    , m_answers(answers)
    , m_recordings(recordings)
    , m_pluggedIn(SourceWatch::pluggedIn(workbench->modules()))
{
    const ModuleRack *const modules = &workbench->modules();
    connect(modules, &ModuleRack::changed, this, &Notices::noteModules);
    connect(modules, &ModuleRack::removed, this, &Notices::noteModules);
    connect(modules, &ModuleRack::replaced, this, [this](int index) {
        m_pluggedIn.removeAll(m_workbench->modules().settings(index).key); // another one, be it under the same key
        noteModules();
    });
    connect(modules, &ModuleRack::failed, this,
            [this](int, const QString &reason) { m_workbench->messages().note(QtWarningMsg, reason); });
    connect(recordings, &Recordings::changed, this, [this] {
        for (const Watched &watched : qAsConst(m_watched)) {
            refresh(watched);
        }
    });
    connect(answers, &AnswerWatch::polled, this, [this] { refresh(); });
    noteAnswers();
}

void Notices::windowOpened(ContainerInterface *container, ContainerWindow *window, const QString &title)
{
    for (Watched &watched : m_watched) {
        if (watched.container == container) {
            watched.window = window;
            refresh(watched);
            return;
        }
    }
    auto *const sources = new SourceWatch(container, &m_workbench->modules(), this);
    connect(container, &QObject::destroyed, sources, &QObject::deleteLater);
    connect(sources, &SourceWatch::switchedOff, this, [this, sources, title] {
        m_workbench->messages().note(QtWarningMsg, tr("%1: %2").arg(title, sources->problem()));
        refresh();
    });
    m_watched.append({container, window, sources});
    refresh(m_watched.constLast());
}

void Notices::noteModules()
{
    const QStringList now = SourceWatch::pluggedIn(m_workbench->modules());
    for (const QString &key : qAsConst(m_pluggedIn)) {
        if (!now.contains(key)) {
            m_workbench->messages().note(QtInfoMsg, tr("%1 was taken out").arg(key));
        }
    }
    for (const QString &key : now) {
        if (!m_pluggedIn.contains(key)) {
            m_workbench->messages().note(QtInfoMsg, tr("%1 was plugged in").arg(key));
        }
    }
    m_pluggedIn = now;
}

void Notices::noteAnswers()
{
    connect(m_answers, &AnswerWatch::fellSilent, this, [this](int index) {
        const QString &key = m_workbench->modules().settings(index).key;
        m_workbench->messages().note(QtWarningMsg,
                                     tr("%1 does not answer any more: its values are old ones from now on").arg(key));
    });
    connect(m_answers, &AnswerWatch::answersAgain, this, [this](int index, int seconds) {
        const QString &key = m_workbench->modules().settings(index).key;
        m_workbench->messages().note(QtInfoMsg,
                                     tr("%1 answers again, after %2 s").arg(key, QLocale().toString(seconds)));
    });
}

void Notices::refresh()
{
    m_watched.erase(std::remove_if(m_watched.begin(), m_watched.end(),
                                   [](const Watched &watched) { return watched.container.isNull(); }),
                    m_watched.end());
    for (const Watched &watched : qAsConst(m_watched)) {
        watched.sources->poll();
        if (RecordingWatch *const recording = m_recordings->watch(watched.container)) {
            recording->setSourceTroubles(troublesOf(*watched.sources)); // which refreshes when they are others
        }
        refresh(watched);
    }
}

void Notices::refresh(const Watched &watched)
{
    if (watched.window.isNull() || watched.container.isNull()) {
        return;
    }
    QStringList notices;
    const RecordingWatch *const recording = m_recordings->watch(watched.container);
    const bool isRecording = recording != nullptr && recording->state() == RecordingWatch::State::Recording;
    const QStringList troubles = troublesOf(*watched.sources);
    for (const QString &trouble : troubles) {
        // The one of the sources begins with the key of a module, whose first letter stays as it is.
        notices.append(trouble == watched.sources->problem() ? trouble : sentence(trouble));
    }
    if (isRecording && recording->linesWithOldValues() > 0) {
        notices.append(
            tr("Lines of the recording with old values: %1").arg(QLocale().toString(recording->linesWithOldValues())));
    }
    if (recording != nullptr && (!recording->problem().isEmpty() || recording->endedUnasked())) {
        notices.append(recording->headline());
    }
    watched.window->setNotices(notices);
}

QStringList Notices::troublesOf(const SourceWatch &sources) const
{
    QStringList troubles;
    const QStringList keys = sources.modules();
    const ModuleRack &modules = m_workbench->modules();
    for (int index = 0; index < modules.count(); ++index) {
        const QString trouble = m_answers->oldValues(index);
        if (!trouble.isEmpty() && keys.contains(modules.settings(index).key)) {
            troubles.append(trouble);
        }
    }
    const QString lost = sources.problem();
    if (!lost.isEmpty()) {
        troubles.append(lost);
    }
    return troubles;
}
