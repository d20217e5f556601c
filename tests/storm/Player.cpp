#include "Player.h"

#include "Harness.h"
#include "Report.h"
#include "Watch.h"

#include "host/ContainerInterface.h"
#include "host/KAROModuleInterface.h"
#include "host/PluginHandler.h"

#include <QAbstractButton>
#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLayout>
#include <QMessageBox>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTimer>

#include <unistd.h>

namespace
{

constexpr int checkInterval = 1000; // events
constexpr int objectChecks = 4;     // every so many of these checks everything begins anew
constexpr unsigned int longestEventSeconds = 120;
constexpr int refreshIntervalMs = 250;

bool isInFileDialog(const QObject *object)
{
    return object != nullptr && (object->inherits("QFileDialog") || isInFileDialog(object->parent()));
}

} // namespace

Player::Player(StormHost *host, const QString &folder, bool hasDevices)
    : m_host(host), m_folder(folder), m_devices(hasDevices ? std::make_unique<FaultyDevices>() : nullptr)
{
    QDir(m_folder).mkpath("logs");
    QTimer::singleShot(0, this, &Player::tameDialog);
}

QString Player::play(const QVector<Op> &ops, int progress)
{
    m_ops = ops;
    m_next = 0;
    m_progress = progress;
    startAnew();
    startAnew(); // what Qt keeps after the first time is there now
    m_objectsBefore = Watch::objects();
    m_heapBefore = Watch::heapBytes();
    m_recordingsBefore = m_counts.recordings;
    m_renewals = 0;
    int checks = 0;
    while (playNext()) {
        if (m_next / checkInterval > checks) {
            checks = m_next / checkInterval;
            checkThousand();
            if (checks % objectChecks == 0) {
                checkObjects();
            }
        }
    }
    checkThousand();
    checkObjects();
    return m_problem;
}

bool Player::playNext()
{
    if (m_next >= m_ops.size() || !m_problem.isEmpty()) {
        return false;
    }
    if (m_progress >= 0) {
        // After a crash the process that started this one reads it.
        [[maybe_unused]] const auto written = pwrite(m_progress, &m_next, sizeof m_next, 0);
    }
    alarm(longestEventSeconds); // the signal ends the process: an event must not stop everything
    const Op op = m_ops.at(m_next++);
    perform(op);
    while (QWidget *const popup = QApplication::activePopupWidget()) {
        popup->close();
    }
    QCoreApplication::sendPostedEvents();
    if (m_depth == 0) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        // Dialogs that run no event loop of their own stay open for a while.
        auto *const dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (dialog != nullptr && op.b % 8U == 0U) {
            endDialog(dialog, op);
        }
    }
    checkAlways();
    alarm(0);
    return true;
}

void Player::fail(const QString &problem)
{
    if (m_problem.isEmpty()) {
        m_problem = QStringLiteral("event %1: %2").arg(m_next - 1).arg(problem.simplified());
    }
}

ContainerInterface *Player::chosen(const Op &op)
{
    ContainerInterface *const container = m_host->container(op.container());
    container->removeEventFilter(this);
    container->installEventFilter(this);
    return container;
}

QWidget *Player::widget(const Op &op)
{
    QWidget *root = chosen(op);
    if (m_host->frame != nullptr && op.b % 8U == 0U) {
        root = m_host->frame;
    } else if (QWidget *const window = m_host->window(op.container())) {
        root = window; // with the windows that the container has opened
    }
    Widgets all = root->findChildren<QWidget *>();
    // Nobody operates what is hidden; and the widgets of file dialogs can delete files.
    const auto isOut = [](QWidget *each) { return !each->isVisible() || isInFileDialog(each); };
    all.erase(std::remove_if(all.begin(), all.end(), isOut), all.end());
    return all.isEmpty() ? root : pick(all, op.a);
}

QWidget *Player::plotOf(ContainerInterface *container) const
{
    const auto *const frame = container->findChild<QWidget *>("widgetPlot");
    return frame == nullptr ? nullptr : frame->layout()->itemAt(1)->widget();
}

KAROModuleInterface *Player::someModule(quint32 choice) const
{
    QList<KAROModuleInterface *> living;
    for (const QPointer<KAROModuleInterface> &module : m_modules) {
        if (!module.isNull()) {
            living.append(module);
        }
    }
    return pick(living, choice);
}

/// That of a scripted module; null when a device is chosen, or nothing is there.
StormChannel *Player::someChannel(quint32 choice) const
{
    const auto *const module = qobject_cast<StormModule *>(someModule(choice));
    return module == nullptr ? nullptr : module->channel;
}

QString Player::logFolder() const
{
    return m_folder + "/logs/";
}

void Player::deliver(ContainerInterface *container, bool isSampling)
{
    const auto timers = QAbstractEventDispatcher::instance()->registeredTimers(container);
    for (const QAbstractEventDispatcher::TimerInfo &timer : timers) {
        if ((timer.interval == refreshIntervalMs) == isSampling) {
            continue;
        }
        QTimerEvent event(timer.timerId);
        const bool wasDelivering = std::exchange(m_isDelivering, true);
        QCoreApplication::sendEvent(container, &event);
        m_isDelivering = wasDelivering;
        ++m_counts.ticks;
        return;
    }
}

bool Player::eventFilter(QObject *watched, QEvent *event)
{
    return (event->type() == QEvent::Timer && !m_isDelivering) || QObject::eventFilter(watched, event);
}

void Player::tameDialog()
{
    // Another one each time: a timer does not fire in an event loop that its own slot runs.
    QTimer::singleShot(0, this, &Player::tameDialog);
    if (QWidget *const popup = QApplication::activePopupWidget()) {
        popup->close();
        return;
    }
    auto *const dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
    if (dialog == nullptr) {
        return;
    }
    ++m_depth;
    ++m_counts.dialogs;
    endDialog(dialog, m_next < m_ops.size() ? m_ops.at(m_next++) : Op());
    --m_depth;
}

void Player::endDialog(QDialog *dialog, const Op &op)
{
    const QPointer<QDialog> guard(dialog);
    auto *const files = qobject_cast<QFileDialog *>(dialog);
    const bool isLog = files != nullptr && files->nameFilters().constFirst() == "csv (*.csv)";
    const auto container = op.container();
    const int plan = static_cast<int>(op.b % 8U);
    if (plan == 3) {
        m_host->close(container);
    } else if (plan == 4) {
        act(container, 4);
    } else if (plan == 5 && m_depth < 4) {
        for (quint32 count = op.a % 30U; count > 0 && !guard.isNull() && playNext(); --count) {
        }
    } else if (plan == 6) {
        act(container, op.a);
    }
    if (guard.isNull()) {
        return;
    }
    const bool isAccepted = files != nullptr && plan != 2 && plan != 3 && plan != 5;
    if (isAccepted) {
        const QString number = QString::number(m_counts.recordings);
        m_counts.recordings += isLog ? 1 : 0;
        files->selectFile(plan == 7 ? m_folder + "/missing/log.csv"
                          : isLog   ? logFolder() + number + ".csv"
                                    : m_folder + "/saved");
    }
    dialog->done(isAccepted ? QDialog::Accepted : QDialog::Rejected);
}

void Player::checkAlways()
{
    const QStringList faults = Watch::takeFaults();
    if (!faults.isEmpty()) {
        fail("warning: " + faults.constFirst());
    }
    if (StormChannel::exchangesWithTheDead() > 0) {
        fail("a module that is gone was asked");
    }
    checkPages();
}

/// The pages of sources are those of the chosen curve, and a closed container does not refresh.
void Player::checkPages()
{
    for (int index = 0; index < StormHost::containerCount; ++index) {
        ContainerInterface *const container = m_host->container(index);
        const bool isOpen = container->parent() != nullptr;
        const int timers = QAbstractEventDispatcher::instance()->registeredTimers(container).size();
        if (timers > (isOpen ? 2 : 1)) {
            fail(filled("%1 timers in a container that is %2", timers, isOpen ? "open" : "closed"));
        }
        const QList<QRadioButton *> radios = container->findChildren<QRadioButton *>();
        for (const QRadioButton *const radio : radios) {
            const int curve = radio->accessibleName().section(QLatin1Char(' '), 1, 1).toInt() - 1;
            for (const char *const pages : {"dockWidgetContentsX", "dockWidgetContentsY"}) {
                const auto *const stack = container->findChild<QStackedWidget *>(pages);
                if (radio->isChecked() && stack->currentIndex() != curve) {
                    fail(filled("curve %1 is chosen, the pages are those of %2", curve, stack->currentIndex()));
                }
            }
        }
    }
}

void Player::checkThousand()
{
    if (!m_problem.isEmpty()) {
        return;
    }
    checkFiles();
    if (m_devices != nullptr) {
        m_counts.deviceRequests += m_devices->takeRequests();
        m_counts.deviceFaults = m_devices->faults();
    }
    QDir("pictures").removeRecursively();
}

/// Every recording has its header and whole lines, numbered from 1 on, and no announced line is missing in all of them.
void Player::checkFiles()
{
    qint64 lines = m_linesOfOldFiles;
    const QFileInfoList files = QDir(logFolder()).entryInfoList(QDir::Files);
    for (const QFileInfo &info : files) {
        const Recorded recorded(contentOf(info.filePath()));
        if (!recorded.isWhole || !recorded.hasHeader || recorded.lastNumber != recorded.lines) {
            fail(filled("%1: header %2, whole lines %3, last of %4 lines has number %5", info.fileName(),
                        recorded.hasHeader, recorded.isWhole, recorded.lines, recorded.lastNumber));
        }
        lines += recorded.lines;
    }
    m_counts.lines = lines;
    if (lines != Watch::announcedLines()) {
        fail(filled("%1 lines were announced, %2 are in the files", Watch::announcedLines(), lines));
    }
}

/// Destroys all and makes it anew: as many objects have to be there as at the beginning.
void Player::checkObjects()
{
    if (!m_problem.isEmpty()) {
        return;
    }
    startAnew();
    QMap<QByteArray, int> objects = Watch::objects();
    // One record for each recording lives as long as the process.
    objects["QFile"] -= static_cast<int>(m_counts.recordings - m_recordingsBefore);
    objects.remove("QPanGesture"); // Qt deletes those of destroyed widgets when it likes
    const QString growth = Watch::growth(m_objectsBefore, objects);
    if (!growth.isEmpty()) {
        fail("objects that are left: " + growth);
    }
    // The points of four curves are kept for each container that is destroyed; up to 16384 of 16 bytes.
    constexpr qint64 keptBytes = 4 * 16384 * 16 + 20000;
    constexpr qint64 slackBytes = 16 << 20;
    const qint64 allowed = slackBytes + m_renewals * keptBytes + m_counts.recordings * 4000;
    const qint64 grown = Watch::heapBytes() - m_heapBefore;
    if (grown > allowed) {
        fail(filled("%1 kB more memory, allowed are %2", grown / 1024, allowed / 1024));
    }
    ++m_counts.leakChecks;
}

void Player::startAnew()
{
    for (int index = 0; index < StormHost::containerCount; ++index) {
        m_host->close(index);
    }
    // That of a closed container which a host shows by itself belongs to nobody until a person closes it.
    const Widgets windows = QApplication::topLevelWidgets();
    for (QWidget *const window : windows) {
        if (window->inherits("ExportCSV") && window->parent() == nullptr) {
            window->close();
        }
    }
    for (const QPointer<KAROModuleInterface> &module : qAsConst(m_modules)) {
        if (!module.isNull()) {
            m_host->container(0)->pluginHandler()->removeModulePlugin(module->key());
        }
    }
    m_modules.clear();
    QApplication::setPalette(QPalette());
    QApplication::setLayoutDirection(Qt::LeftToRight);
    for (int index = 0; index < (m_host->isRenewedWhole ? 1 : StormHost::containerCount); ++index) {
        m_host->renew(index);
    }
    m_renewals += StormHost::containerCount;
    Watch::settle();
    const QFileInfoList files = QDir(logFolder()).entryInfoList(QDir::Files);
    for (const QFileInfo &info : files) {
        m_linesOfOldFiles += Recorded(contentOf(info.filePath())).lines;
        QFile::remove(info.filePath());
    }
    for (int index = 0; index < StormHost::containerCount; ++index) {
        chosen({0, 0, 0, static_cast<quint32>(index)});
    }
}
