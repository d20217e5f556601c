#include "window/StatusSummary.h"

#include "logging/Recordings.h"
#include "modules/AnswerWatch.h"
#include "window/Workbench.h"

#include <QLabel>
#include <QLocale>
#include <QStatusBar>

namespace
{

constexpr int minimumStateWidth = 160; // widget pixels
constexpr int maximumKeyWidth = 20;    // average characters
constexpr int panelMarginWidth = 6;    // widget pixels
constexpr int messageTimeMs = 8000;

} // namespace

StatusSummary::StatusSummary(QStatusBar *bar, Workbench *workbench, const AnswerWatch *answers, Recordings *recordings,
                             QObject *parent)
    : QObject(parent)
    , m_bar(bar)
    , m_workbench(workbench)
    , m_answers(answers)
    , m_recordings(recordings)
    , m_recordingState(new QLabel)
    , m_answerRate(new QLabel)
    , m_moduleCount(new QLabel)
{
    for (QLabel *const label : {m_recordingState, m_answerRate, m_moduleCount}) {
        label->setContentsMargins(panelMarginWidth, 0, panelMarginWidth, 0);
        bar->addPermanentWidget(label);
    }
    connect(m_recordings, &Recordings::changed, this, &StatusSummary::showRecordings);
    connect(m_answers, &AnswerWatch::polled, this, &StatusSummary::showAnswers);
    const ModuleRack *const modules = &m_workbench->modules();
    connect(modules, &ModuleRack::changed, this, &StatusSummary::showModuleCount);
    connect(modules, &ModuleRack::removed, this, &StatusSummary::showModuleCount);
    connect(modules, &ModuleRack::replaced, this, &StatusSummary::showModuleCount);
    // What a container reports through the logger only, such as where its screenshot went, is shown for a while.
    connect(&m_workbench->messages(), &MessageLog::arrived, this, [this](const QVector<LogMessage> &messages) {
        for (const LogMessage &message : messages) {
            if (message.type != QtDebugMsg) {
                m_bar->showMessage(message.text.simplified(), messageTimeMs);
            }
        }
    });
    showRecordings();
    showAnswers();
    m_moduleCount->setToolTip(tr("Modules that containers find, of those that are listed"));
    showModuleCount();
}

void StatusSummary::showRecordings()
{
    const QString summary = m_recordings->summary();
    QFont font = m_bar->font();
    font.setBold(m_recordings->hasTrouble());
    m_recordingState->setFont(font);
    const int widthPixels = qMax(minimumStateWidth, m_bar->window()->width() / 3);
    m_recordingState->setText(m_recordingState->fontMetrics().elidedText(summary, Qt::ElideMiddle, widthPixels));
    m_recordingState->setToolTip(summary);
}

void StatusSummary::showAnswers()
{
    const QStringList silent = m_answers->silentModules();
    QFont font = m_bar->font();
    font.setBold(!silent.isEmpty());
    m_answerRate->setFont(font);
    // Short, whatever the modules are called and however many are silent: the rest of the bar is for messages.
    QString text = tr("%1 answers/s").arg(QLocale().toString(m_answers->answersPerSecond(), 'f', 0));
    if (!silent.isEmpty()) {
        const QFontMetrics metrics(font);
        const QString key =
            metrics.elidedText(silent.constFirst(), Qt::ElideMiddle, maximumKeyWidth * metrics.averageCharWidth());
        text += tr(", not answering: %1").arg(silent.size() == 1 ? key : QString::number(silent.size()));
    }
    m_answerRate->setText(text);
    QStringList troubles;
    for (int index = 0; index < m_workbench->modules().count(); ++index) {
        troubles.append(m_answers->oldValues(index));
    }
    troubles.removeAll(QString());
    m_answerRate->setToolTip(troubles.isEmpty() ? tr("Answers that came from all modules in a second")
                                                : troubles.join(QLatin1Char('\n')));
}

void StatusSummary::showModuleCount()
{
    const ModuleRack &modules = m_workbench->modules();
    int pluggedIn = 0;
    for (int index = 0; index < modules.count(); ++index) {
        pluggedIn += modules.isPluggedIn(index) ? 1 : 0;
    }
    m_moduleCount->setText(tr("%1 of %2 modules plugged in").arg(pluggedIn).arg(modules.count()));
}
