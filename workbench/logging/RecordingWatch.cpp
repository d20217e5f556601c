#include "logging/RecordingWatch.h"

#include "PlotterWindow.h"
#include "logging/WriteObstacle.h"

#include "host/DynamicProperty.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QLocale>
#include <QTimer>

#include <algorithm>

namespace
{

QString lineCount(int count)
{
    return count == 1 ? RecordingWatch::tr("1 line") : RecordingWatch::tr("%1 lines").arg(QLocale().toString(count));
}

} // namespace

RecordingWatch::RecordingWatch(QWidget *container, const QString &title, QObject *parent)
    : QObject(parent), m_container(container), m_title(title)
{
}

void RecordingWatch::windowOpened()
{
    m_box = m_container.isNull() ? nullptr : m_container->findChild<QCheckBox *>(PlotterWindow::logBoxName());
    if (m_state == State::Off && (m_box.isNull() || !m_box->isChecked())) {
        emit changed();
        return;
    }
    // A container forgets its recording when it is opened again, and leaves its box as it was.
    poll();
    m_state = State::CheckedOnly;
    setProblem(tr("The box is checked, but nothing is being recorded since the window was opened again"));
}

void RecordingWatch::windowClosed()
{
    if (m_state == State::Recording) {
        poll();
        m_state = State::CheckedOnly; // the container keeps its box as it is, and begins with nothing when opened again
        setProblem({});
        end(tr("the window was closed"), true);
    }
}

bool RecordingWatch::isAsking() const
{
    return m_state == State::Off && !m_box.isNull() && m_box->isChecked();
}

void RecordingWatch::dialogOpened(QFileDialog *dialog)
{
    m_chosenPath.clear();
    connect(dialog, &QFileDialog::fileSelected, this, &RecordingWatch::fileChosen);
}

void RecordingWatch::boxToggled(bool on)
{
    if (!on) {
        poll();
        const bool wasRecording = m_state == State::Recording;
        m_state = State::Off;
        setProblem({});
        const QString reason = switchedReason();
        if (wasRecording && !reason.isEmpty()) {
            end(reason, true);
        } else if (wasRecording) {
            end(tr("the box was unticked"), false);
        }
    } else if (!m_box.isNull() && m_box->isChecked()) {
        begin();
    } else {
        setProblem({}); // the dialog was cancelled, and the box unchecked without a signal
    }
    m_chosenPath.clear();
}

void RecordingWatch::linesAnnounced(int lines, int withOldValues)
{
    if (m_state == State::Recording && m_announced >= 0) {
        m_announced += lines;
        m_withOldValues += withOldValues;
    }
}

void RecordingWatch::setSourceTroubles(const QStringList &troubles)
{
    if (troubles != m_sourceTroubles) {
        m_sourceTroubles = troubles;
        emit changed();
    }
}

void RecordingWatch::forgetAnnouncements()
{
    m_announced = -1;
}

void RecordingWatch::poll()
{
    if (m_state == State::Recording) {
        m_file.poll();
        setProblem(problemNow());
    }
}

QString RecordingWatch::title() const
{
    return m_title;
}

RecordingWatch::State RecordingWatch::state() const
{
    return m_state;
}

QCheckBox *RecordingWatch::box() const
{
    return m_box;
}

const LogFollower &RecordingWatch::file() const
{
    return m_file;
}

QString RecordingWatch::headline() const
{
    if (!m_problem.isEmpty()) {
        return m_problem;
    }
    if (m_state == State::Unknown) {
        return tr("The box is checked; into which file is not known");
    }
    if (m_state != State::Recording) {
        return m_ending.isEmpty() ? tr("Not recording") : m_ending;
    }
    const QString name = QFileInfo(m_file.path()).fileName();
    if (m_container.isNull() || !m_container->isVisible()) {
        return tr("Recording into %1 rests: nothing is sampled while the window is hidden").arg(name);
    }
    const QString base = tr("Recording into %1").arg(name);
    return warning().isEmpty() ? base : tr("%1; %2").arg(base, warning());
}

QString RecordingWatch::brief() const
{
    const bool hasCount = m_state == State::Recording && m_problem.isEmpty();
    return hasCount ? tr("%1: %2").arg(lineCount(m_file.dataLines()), headline()) : headline();
}

bool RecordingWatch::endedUnasked() const
{
    return !m_ending.isEmpty() && m_endedUnasked;
}

QString RecordingWatch::problem() const
{
    return m_problem;
}

QString RecordingWatch::warning() const
{
    if (m_state != State::Recording) {
        return {};
    }
    QStringList parts;
    if (m_withOldValues > 0) {
        parts.append(tr("%1 with old values").arg(lineCount(m_withOldValues)));
    }
    parts += m_sourceTroubles;
    return parts.join(QStringLiteral("; "));
}

int RecordingWatch::linesWithOldValues() const
{
    return m_withOldValues;
}

int RecordingWatch::missingLines() const
{
    return m_announced < 0 || !m_file.isRegular() ? 0 : std::max(0, m_announced - m_file.dataLines());
}

QString RecordingWatch::lastFailure() const
{
    return m_lastFailure;
}

RecordingWatch::Choices RecordingWatch::choices() const
{
    Choices found;
    if (m_container.isNull()) {
        return found;
    }
    const QList<QCheckBox *> boxes = PlotterWindow::curveBoxes(m_container);
    for (const QCheckBox *const box : boxes) {
        found.curves.append(box->isChecked());
        found.sources.append(box->property(DynamicProperty::CaptureX).toString() + QLatin1Char('\n') +
                             box->property(DynamicProperty::CaptureY).toString());
    }
    const QString name = PlotterWindow::optionBoxName(PlotterWindow::Option::ShowAll);
    const auto *const showAll = m_container->findChild<QCheckBox *>(name);
    found.showsAll = showAll != nullptr && showAll->isChecked();
    return found;
}

QString RecordingWatch::switchedReason() const
{
    const Choices now = choices();
    for (int curve = 0; curve < qMin(now.curves.size(), m_choices.curves.size()); ++curve) {
        if (now.curves.at(curve) != m_choices.curves.at(curve)) {
            return (now.curves.at(curve) ? tr("curve %1 was switched on") : tr("curve %1 was switched off"))
                .arg(curve + 1);
        }
    }
    return now.showsAll == m_choices.showsAll ? QString() : tr("\"Show all data\" was switched");
}

QString RecordingWatch::sourceReason() const
{
    const Choices now = choices();
    for (int curve = 0; curve < qMin(now.sources.size(), m_choices.sources.size()); ++curve) {
        const bool isRecorded = now.showsAll || now.curves.value(curve);
        if (isRecorded && now.sources.at(curve) != m_choices.sources.at(curve)) {
            return tr("curve %1 got another source").arg(curve + 1);
        }
    }
    return {};
}

void RecordingWatch::end(const QString &reason, bool isUnasked)
{
    m_endedUnasked = isUnasked;
    const QString time = QLocale().toString(QTime::currentTime(), QStringLiteral("hh:mm:ss"));
    m_ending = tr("Recording into %1 ended at %2: %3").arg(QFileInfo(m_file.path()).fileName(), time, reason);
    emit changed();
    if (isUnasked) { // its reason is known, and this watch may be about to go
        emit ended();
        return;
    }
    // A container unchecks its box first, and shows the new source that was the reason afterwards.
    QTimer::singleShot(0, this, [this, time] {
        const QString source = sourceReason();
        if (!source.isEmpty() && !m_ending.isEmpty()) {
            m_endedUnasked = true;
            m_ending = tr("Recording into %1 ended at %2: %3").arg(QFileInfo(m_file.path()).fileName(), time, source);
            emit changed();
        }
        emit ended();
    });
}

void RecordingWatch::fileChosen(const QString &path)
{
    // The container opens the file when the dialog is gone: this is the last look at what was there before.
    const QFileInfo info(path);
    m_chosenPath = info.absoluteFilePath();
    m_before = {info.exists(), info.size(), info.lastModified()};
}

void RecordingWatch::begin()
{
    m_announced = 0;
    m_missingBefore = 0;
    m_withOldValues = 0;
    m_lastFailure.clear();
    m_ending.clear();
    m_choices = choices();
    m_file = LogFollower(m_chosenPath);
    if (m_chosenPath.isEmpty()) {
        m_state = State::Unknown;
        setProblem({});
        return;
    }
    m_file.poll();
    if (!wasOpened()) {
        m_state = State::CheckedOnly;
        const QString obstacle = writeObstacle(m_chosenPath);
        const QString name = QFileInfo(m_chosenPath).fileName();
        setProblem(obstacle.isEmpty()
                       ? tr("The box is checked, but nothing is being recorded: %1 could not be opened").arg(name)
                       : tr("The box is checked, but nothing is being recorded: %1 could not be opened: %2")
                             .arg(name, obstacle));
        return;
    }
    m_state = State::Recording;
    setProblem(problemNow());
}

bool RecordingWatch::wasOpened() const
{
    const QFileInfo info(m_chosenPath);
    if (!info.exists() || !m_before.exists) {
        return info.exists();
    }
    if (!m_file.isRegular()) {
        return info.isWritable(); // opening a device leaves no trace
    }
    return info.lastModified() != m_before.modified || info.size() != m_before.bytes;
}

QString RecordingWatch::problemNow()
{
    const QString name = QFileInfo(m_file.path()).fileName();
    const QString obstacle = writeObstacle(m_file.path());
    const int missing = missingLines();
    const bool isLosing = missing > m_missingBefore;
    m_missingBefore = missing;
    if (!m_file.isThere()) {
        return obstacle.isEmpty() ? tr("%1 has vanished; the next line will begin it anew, without a header").arg(name)
                                  : tr("%1 has vanished: %2; lines are being lost").arg(name, obstacle);
    }
    if (!obstacle.isEmpty()) {
        return missing == 0 ? tr("%1 cannot be written any more: %2; lines are being lost").arg(name, obstacle)
                            : tr("%1 sampled but not in %2: %3").arg(lineCount(missing), name, obstacle);
    }
    if (m_file.wasReplaced()) {
        return missing == 0
                   ? tr("%1 was replaced while recording: its header and earlier lines are gone").arg(name)
                   : tr("%1 was replaced while recording: its header and %2 are gone").arg(name, lineCount(missing));
    }
    if (!m_file.isRegular()) {
        return tr("Recording into %1, which cannot be read back: what arrives there is not known").arg(name);
    }
    if (!m_file.hasHeader()) {
        return tr("%1 was opened, but its header could not be written").arg(name);
    }
    return isLosing ? tr("%1 sampled but not in %2; the reason is not known").arg(lineCount(missing), name) : QString();
}

void RecordingWatch::setProblem(const QString &problem)
{
    const bool isNew = m_problem.isEmpty() && !problem.isEmpty();
    m_problem = problem;
    if (!problem.isEmpty()) {
        m_lastFailure = tr("%1: %2").arg(QLocale().toString(QTime::currentTime(), QStringLiteral("hh:mm:ss")), problem);
    }
    if (isNew) {
        emit failed();
    }
    emit changed();
}
