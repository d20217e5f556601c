#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <functional>

class QFileDialog;
class QMessageBox;
class RecordingWatch;

/**
 * Records a container's samples into a file, as a person would: by its own box and save dialog. GUI thread.
 *
 * Waits until the container has what it takes, and holds its timers while the dialog is open: so no sample passes
 * between the first points of the curves and the first line, and the same scene gives the same lines every time.
 */
class RecordingDriver : public QObject
{
    Q_OBJECT

public:
    /**
     * \param watch   of the container; not owned, has to outlive this
     * \param path    of the file, absolute; an existing one is overwritten
     * \param isReady whether every curve that is to be recorded has a point
     */
    RecordingDriver(QWidget *container, RecordingWatch *watch, const QString &path, std::function<bool()> isReady);

    /// Unchecks the box, if the recording still runs, and notes what had gone wrong when its file was last looked at.
    void stop();

    /// The first error, one line; empty while there is none.
    QString error() const;

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void begun();
    /// There will be no recording; error() says why.
    void failed();

private:
    enum class Phase
    {
        Waiting,
        Asking, ///< the container's timers are held
        Over    ///< recording, or given up
    };

    void ask();
    void fillIn(QFileDialog *dialog);
    static void answer(QMessageBox *question);
    void fail(const QString &problem);

    const QPointer<QWidget> m_container;
    const QPointer<RecordingWatch> m_watch;
    const QString m_path;
    const std::function<bool()> m_isReady;
    Phase m_phase = Phase::Waiting;
    QTimer m_waitTimer{this};
    QString m_error;
};
