#pragma once

#include "logging/LogFollower.h"

#include <QDateTime>
#include <QObject>
#include <QPointer>
#include <QString>

class QCheckBox;
class QFileDialog;
class QWidget;

/**
 * Finds out from outside whether one container is recording into a file, and whether the lines get there.
 *
 * A container does not report it: it has a check box that opens a save dialog, and fails silently. So the box is
 * watched, the dialog is asked for its choice, and the file is looked at. Owned by Recordings, which sees the dialogs
 * and the logger; the container is not owned. GUI thread.
 */
class RecordingWatch : public QObject
{
    Q_OBJECT

public:
    enum class State
    {
        Off,
        Recording,
        CheckedOnly, ///< the box is checked and nothing is recorded
        Unknown      ///< the box is checked and no dialog was seen that named a file
    };

    /// \param title what a person calls the container
    RecordingWatch(QWidget *container, const QString &title, QObject *parent);

    /// To be called when the container's window was opened: its box may be new, and recording has ended.
    void windowOpened();

    /// Whether the box has been checked and the container has not yet come back from asking for a file.
    bool isAsking() const;
    /// The container's own save dialog is shown.
    void dialogOpened(QFileDialog *dialog);
    /// The box has changed and the container is done with it.
    void boxToggled(bool on);
    /// \a lines more were sampled and, as the container believes, written, some of them with old values.
    void linesAnnounced(int lines, int withOldValues);
    /// The keys of the modules that do not answer right now.
    void setSilentModules(const QStringList &keys);
    /// It is no longer known how many lines were announced.
    void forgetAnnouncements();
    /// Looks at the file.
    void poll();

    QString title() const;
    State state() const;
    QCheckBox *box() const; ///< Null while the container has none.
    /// The file of the current or last recording; before the first one its path is empty.
    const LogFollower &file() const;
    /// One line that says what is going on, or what is wrong.
    QString headline() const;
    /// What is wrong right now; empty when all that was sampled is in the file, as far as is known.
    QString problem() const;
    /// What the lines of the recording that runs lack though they are in the file; empty when nothing is known.
    QString warning() const;
    /// Lines of the current or last recording in which a value, or all of a curve's, is that of an earlier tick
    /// because its module did not answer, or rested.
    int linesWithOldValues() const;
    /// Lines that were announced and are not in the file, 0 when that is not known.
    int missingLines() const;
    /// The last write that failed, with the time when it was noticed; empty when there was none.
    QString lastFailure() const;

signals:
    void changed();
    /// Something that was asked for is not being recorded; once for each kind of trouble.
    void failed();

private:
    /// What a file was like when it was chosen, to see whether it was opened for writing afterwards.
    struct Before
    {
        bool exists = false;
        qint64 bytes = 0;
        QDateTime modified;
    };

    void fileChosen(const QString &path);
    void begin();
    bool wasOpened() const;
    QString problemNow();
    void setProblem(const QString &problem);

    const QPointer<QWidget> m_container;
    const QString m_title;
    QPointer<QCheckBox> m_box;
    State m_state = State::Off;
    QString m_chosenPath; // while asking
    Before m_before;
    LogFollower m_file;
    int m_announced = -1; // lines; -1 when not known
    int m_missingBefore = 0;
    int m_withOldValues = 0; // lines
    QStringList m_silentModules;
    QString m_problem;
    QString m_lastFailure;
};
