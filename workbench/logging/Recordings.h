#pragma once

#include "logging/MessageLog.h"
#include "logging/RecordingWatch.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QTimer>

class QWidget;

/**
 * Watches the recordings of all containers.
 *
 * Sees the save dialogs that open, hears from the logger which lines the containers believe to have written, and has
 * the files looked at in regular intervals. The log is not owned and has to outlive this. GUI thread.
 */
class Recordings : public QObject
{
    Q_OBJECT

public:
    static constexpr int lookIntervalMs = 1000;

    explicit Recordings(MessageLog *log, QObject *parent = nullptr);

    /// Begins to watch \a container when its window is opened, or goes on with it.
    void windowOpened(QWidget *container, const QString &title);

    QList<RecordingWatch *> watches() const;
    /// That of \a container; null when it was never opened.
    RecordingWatch *watch(QWidget *container) const;

    /// Looks at all files now.
    void look();

    /// One line about all recordings, for a status bar.
    QString summary() const;
    bool hasProblem() const;

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void added(RecordingWatch *watch);
    void changed();
    void failed();

private:
    void hear(const QVector<LogMessage> &messages);

    MessageLog *const m_log; // not owned
    QList<RecordingWatch *> m_watches;
    QHash<QWidget *, RecordingWatch *> m_byContainer;
    QTimer m_lookTimer;
};
