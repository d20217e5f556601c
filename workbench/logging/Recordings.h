#pragma once

#include "logging/MessageLog.h"
#include "logging/RecordingWatch.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QTimer>

class ModuleRack;
class QWidget;

/**
 * Watches the recordings of all containers.
 *
 * Detects the save dialogs that open, counts the lines that containers announce through the logger,
 * compares the modules' counters to find those without new values, and reads the files in regular intervals. The log is
 * not owned and has to outlive this. GUI thread.
 */
class Recordings : public QObject
{
    Q_OBJECT

public:
    static constexpr int pollIntervalMs = 1000;

    /// \param rack the modules whose values are recorded; not owned, has to outlive this
    Recordings(MessageLog *log, const ModuleRack *rack, QObject *parent = nullptr);
    ~Recordings() override;

    /// Watches \a container from the first opening of its window on; to be called at each opening.
    void windowOpened(QWidget *container, const QString &title);

    /// Forgets \a container, which is about to be destroyed, and what was recorded of it.
    void containerRemoved(QWidget *container);

    /// To be called when a container's window was closed.
    void windowClosed(QWidget *container);

    QList<RecordingWatch *> watches() const;
    /// That of \a container; null when it was never opened.
    RecordingWatch *watch(QWidget *container) const;

    /// Looks at all files now.
    void poll();

    /// One line about all recordings, for a status bar.
    QString summary() const;
    /// A problem, a warning, or a recording that ended otherwise than by its box.
    bool hasTrouble() const;
    bool isRecording() const; ///< at least one container

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void added(RecordingWatch *watch);
    void changed();
    void failed();

private:
    void countLines(const QVector<LogMessage> &messages);

    MessageLog *const m_log;        // not owned
    const ModuleRack *const m_rack; // not owned
    quint64 m_missedAtTick = 0;     // answers, when the last timer event of a container began
    QList<RecordingWatch *> m_watches;
    QHash<QWidget *, RecordingWatch *> m_byContainer;
    QTimer m_pollTimer;
};
