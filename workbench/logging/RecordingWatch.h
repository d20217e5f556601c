#pragma once

#include "logging/LogFollower.h"

#include <QDateTime>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QVector>

class QCheckBox;
class QFileDialog;
class QWidget;

/**
 * Finds out from outside whether one container is recording into a file, and whether the lines get there.
 *
 * A container does not report it: it has a check box that opens a save dialog, and fails silently. So the box is
 * observed, the chosen file is taken from the dialog, and the file is polled. Owned by Recordings, which finds
 * the dialogs and reads the logger; the container is not owned. GUI thread.
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

    /// To be called when the container's window was closed, which ends sampling.
    void windowClosed();

    /// Whether the box has been checked and the container has not yet come back from asking for a file.
    bool isAsking() const;
    /// The container's own save dialog is shown.
    void dialogOpened(QFileDialog *dialog);
    /// The box has changed and the container is done with it.
    void boxToggled(bool on);
    /// \a lines more were sampled and, as the container believes, written, some of them with old values.
    void linesAnnounced(int lines, int withOldValues);
    /// What is wrong with the sources of the container right now, a line each: silent modules, lost sources.
    void setSourceTroubles(const QStringList &troubles);
    /// It is no longer known how many lines were announced.
    void forgetAnnouncements();
    /// Looks at the file.
    void poll();

    QString title() const;
    State state() const;
    QCheckBox *box() const; ///< Null while the container has none.
    /// The file of the current or last recording; before the first one its path is empty.
    const LogFollower &file() const;
    /// One line that says what is going on, what is wrong, or why the last recording ended.
    QString headline() const;
    /// headline() for where nothing else is shown: with the number of lines.
    QString brief() const;
    /// Whether the last recording ended otherwise than by its box, and none has begun since.
    bool endedUnasked() const;
    /// What is wrong right now; empty when all that was sampled is in the file, as far as is known.
    QString problem() const;
    /// What is wrong with the values in the running recording's lines, which are all in the file; empty if nothing is.
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
    /// A problem() has come up; not emitted again before it has cleared.
    void failed();
    /// A recording is over, headline() and endedUnasked() say why.
    void ended();

private:
    /// What a file was like when it was chosen, to see whether it was opened for writing afterwards.
    struct Before
    {
        bool exists = false;
        qint64 bytes = 0;
        QDateTime modified;
    };

    /// What of the container ends a recording when it changes.
    struct Choices
    {
        QVector<bool> curves; // switched on
        bool showsAll = false;
        QStringList sources; // of each curve
    };

    Choices choices() const;
    /// What was switched since the recording began; empty when nothing was, or a source at most.
    QString switchedReason() const;
    QString sourceReason() const;
    void end(const QString &reason, bool isUnasked);

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
    QStringList m_sourceTroubles;
    Choices m_choices; // when the recording began
    QString m_ending;  // one line on the last recording's end; empty before, and while one runs
    bool m_endedUnasked = false;
    QString m_problem;
    QString m_lastFailure;
};
