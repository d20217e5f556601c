#include "logging/Recordings.h"

#include "PlotterWindow.h"
#include "modules/ModuleRack.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QEvent>
#include <QFileDialog>

#include <algorithm>

Recordings::Recordings(MessageLog *log, const ModuleRack *rack, QObject *parent)
    : QObject(parent), m_log(log), m_rack(rack)
{
    // A container samples and announces its line in one timer event: what was not answered in it is old in the line.
    m_log->setMarker([this] { return m_rack->missedAnswers() > m_missedAtTick; });
    qApp->installEventFilter(this);
    connect(m_log, &MessageLog::arrived, this, &Recordings::countLines);
    connect(&m_pollTimer, &QTimer::timeout, this, &Recordings::poll);
    m_pollTimer.start(pollIntervalMs);
}

Recordings::~Recordings()
{
    m_log->setMarker({});
}

void Recordings::windowOpened(QWidget *container, const QString &title)
{
    RecordingWatch *watch = m_byContainer.value(container);
    if (watch == nullptr) {
        watch = new RecordingWatch(container, title, this);
        m_byContainer.insert(container, watch);
        m_watches.append(watch);
        connect(watch, &RecordingWatch::changed, this, &Recordings::changed);
        connect(watch, &RecordingWatch::failed, this, [this, watch] {
            m_log->note(QtWarningMsg, tr("%1: %2").arg(watch->title(), watch->problem()));
            emit failed();
        });
        connect(watch, &RecordingWatch::ended, this, [this, watch] {
            const QString path = QDir::toNativeSeparators(watch->file().path());
            m_log->note(watch->endedUnasked() ? QtWarningMsg : QtInfoMsg,
                        tr("%1: %2. The file is %3").arg(watch->title(), watch->headline(), path));
        });
        emit added(watch);
    }
    const QCheckBox *const knownBox = watch->box();
    watch->windowOpened();
    if (watch->box() != nullptr && watch->box() != knownBox) {
        connect(watch->box(), &QCheckBox::toggled, watch, [this, watch](bool on) {
            m_log->deliver(); // what was announced before belongs to what was before
            watch->boxToggled(on);
        });
    }
}

void Recordings::containerRemoved(QWidget *container)
{
    RecordingWatch *const watch = m_byContainer.take(container);
    m_watches.removeOne(watch);
    delete watch;
    emit changed();
}

void Recordings::windowClosed(QWidget *container)
{
    if (RecordingWatch *const watch = m_byContainer.value(container)) {
        m_log->deliver();
        watch->windowClosed();
    }
}

QList<RecordingWatch *> Recordings::watches() const
{
    return m_watches;
}

RecordingWatch *Recordings::watch(QWidget *container) const
{
    return m_byContainer.value(container);
}

void Recordings::poll()
{
    // A line is announced before the container closes the file behind it: from the event loop both are complete, and
    // what was announced and is not in the file is missing.
    m_log->deliver();
    for (RecordingWatch *const watch : qAsConst(m_watches)) {
        watch->poll();
    }
}

QString Recordings::summary() const
{
    QStringList running;
    for (const RecordingWatch *const watch : m_watches) {
        if (!watch->problem().isEmpty()) {
            return watch->headline();
        }
        if (watch->state() != RecordingWatch::State::Off || watch->endedUnasked()) {
            running.append(watch->brief());
        }
    }
    return running.isEmpty() ? tr("Not recording") : running.join(QStringLiteral("; "));
}

bool Recordings::hasTrouble() const
{
    return std::any_of(m_watches.cbegin(), m_watches.cend(), [](const RecordingWatch *watch) {
        return !watch->problem().isEmpty() || !watch->warning().isEmpty() || watch->endedUnasked();
    });
}

bool Recordings::isRecording() const
{
    return std::any_of(m_watches.cbegin(), m_watches.cend(),
                       [](const RecordingWatch *watch) { return watch->state() == RecordingWatch::State::Recording; });
}

bool Recordings::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Timer && watched->isWidgetType() &&
        m_byContainer.contains(static_cast<QWidget *>(watched))) {
        m_missedAtTick = m_rack->missedAnswers();
    }
    if (event->type() != QEvent::Show) {
        return false;
    }
    auto *const dialog = qobject_cast<QFileDialog *>(watched);
    if (dialog == nullptr || dialog->acceptMode() != QFileDialog::AcceptSave) {
        return false;
    }
    // A container that asks is still in the call that checked its box; the one that asked last is on top.
    for (RecordingWatch *const watch : qAsConst(m_watches)) {
        if (watch->isAsking()) {
            watch->dialogOpened(dialog);
        }
    }
    return false;
}

void Recordings::countLines(const QVector<LogMessage> &messages)
{
    int count = 0;
    int withOldValues = 0;
    for (const LogMessage &message : messages) {
        if (message.type == QtDebugMsg && PlotterWindow::announcesLogLine(message.text)) {
            ++count;
            withOldValues += message.isMarked ? 1 : 0;
        }
    }
    if (count == 0) {
        return;
    }
    const auto isRecording = [](const RecordingWatch *watch) {
        return watch->state() == RecordingWatch::State::Recording;
    };
    const bool isOneOnly = std::count_if(m_watches.cbegin(), m_watches.cend(), isRecording) == 1;
    for (RecordingWatch *const watch : qAsConst(m_watches)) {
        // The messages do not say which container they are from: of two that record at once none can be counted.
        isOneOnly ? watch->linesAnnounced(count, withOldValues) : watch->forgetAnnouncements();
    }
}
