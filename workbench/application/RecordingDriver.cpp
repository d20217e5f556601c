#include "application/RecordingDriver.h"

#include "PlotterWindow.h"
#include "logging/RecordingWatch.h"
#include "setup/MouseClick.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QEvent>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

#include <utility>

namespace
{

constexpr int maximumWaitMs = 10000;

} // namespace

RecordingDriver::RecordingDriver(QWidget *container, RecordingWatch *watch, const QString &path,
                                 std::function<bool()> isReady)
    : m_container(container), m_watch(watch), m_path(path), m_isReady(std::move(isReady))
{
    m_waitTimer.setSingleShot(true);
    connect(&m_waitTimer, &QTimer::timeout, this, [this] { fail(tr("no curve got a point to record")); });
    m_waitTimer.start(maximumWaitMs);
    qApp->installEventFilter(this);
}

void RecordingDriver::stop()
{
    if (m_watch.isNull() || m_watch->state() == RecordingWatch::State::Off) {
        if (m_error.isEmpty()) {
            m_error = tr("%1: the recording was ended before its time").arg(m_path);
        }
        return;
    }
    if (m_error.isEmpty()) {
        m_error = m_watch->problem().isEmpty() ? m_watch->lastFailure() : m_watch->problem();
    }
    MouseClick::on(m_watch->box());
}

QString RecordingDriver::error() const
{
    return m_error;
}

bool RecordingDriver::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Timer && watched == m_container) {
        if (m_phase == Phase::Waiting && m_isReady()) {
            m_phase = Phase::Asking;
            m_waitTimer.stop();
            QMetaObject::invokeMethod(this, &RecordingDriver::ask, Qt::QueuedConnection);
        }
        return m_phase == Phase::Asking;
    }
    if (event->type() != QEvent::Show || m_phase != Phase::Asking) {
        return false;
    }
    // A dialog runs its event loop after it is shown: it can be answered from then on, and not at once.
    if (auto *const dialog = qobject_cast<QFileDialog *>(watched)) {
        QMetaObject::invokeMethod(
            dialog, [=] { fillIn(dialog); }, Qt::QueuedConnection);
    } else if (auto *const question = qobject_cast<QMessageBox *>(watched)) {
        QMetaObject::invokeMethod(
            question, [=] { answer(question); }, Qt::QueuedConnection);
    }
    return false;
}

void RecordingDriver::ask()
{
    QCheckBox *const box = m_watch.isNull() ? nullptr : m_watch->box();
    if (box == nullptr || box->isChecked()) {
        fail(tr("the container has no box \"%1\" to switch a recording on").arg(PlotterWindow::logBoxName()));
        return;
    }
    MouseClick::on(box); // returns when the dialog is gone
    if (m_watch.isNull()) {
        fail(tr("the plot window was closed, nothing was recorded"));
        return;
    }
    if (m_watch->state() != RecordingWatch::State::Recording || m_watch->file().path() != m_path) {
        fail(m_watch->problem().isEmpty() ? tr("%1: the save dialog did not take this file").arg(m_path)
                                          : m_watch->problem());
        return;
    }
    m_phase = Phase::Over;
    emit begun();
}

void RecordingDriver::fillIn(QFileDialog *dialog)
{
    dialog->selectFile(m_path);
    const auto *const buttons = dialog->findChild<QDialogButtonBox *>();
    QPushButton *const save = buttons == nullptr ? nullptr : buttons->button(QDialogButtonBox::Save);
    if (save == nullptr || !save->isEnabled()) {
        dialog->reject();
        return;
    }
    save->click(); // may bring up the question whether to overwrite
    if (dialog->isVisible()) {
        dialog->reject();
    }
}

void RecordingDriver::answer(QMessageBox *question)
{
    if (QAbstractButton *const yes = question->button(QMessageBox::Yes)) {
        yes->click();
    } else {
        question->reject();
    }
}

void RecordingDriver::fail(const QString &problem)
{
    m_phase = Phase::Over;
    m_waitTimer.stop();
    m_error = problem;
    emit failed();
}
