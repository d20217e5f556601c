#pragma once

#include <QObject>

class AnswerWatch;
class QLabel;
class QStatusBar;
class Recordings;
class Workbench;

/**
 * What the status bar shows all the time: recordings, answers, modules; and for a while what goes to the logger.
 *
 * Nothing that is given is owned, and all of it has to outlive this. GUI thread.
 */
class StatusSummary : public QObject
{
    Q_OBJECT

public:
    StatusSummary(QStatusBar *bar, Workbench *workbench, const AnswerWatch *answers, Recordings *recordings,
                  QObject *parent = nullptr);

private:
    void showRecordings();
    void showAnswers();
    void showModuleCount();

    QStatusBar *const m_bar;            // not owned
    Workbench *const m_workbench;       // not owned
    const AnswerWatch *const m_answers; // not owned
    Recordings *const m_recordings;     // not owned
    QLabel *const m_recordingState;     // of the bar, as the following
    QLabel *const m_answerRate;
    QLabel *const m_moduleCount;
};
