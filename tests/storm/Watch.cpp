#include "Watch.h"

#include "PlotterWindow.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QThread>

#include <malloc.h>
#include <mutex>
#include <unistd.h>
#include <unordered_set>

extern Q_CORE_EXPORT quintptr qtHookData[]; // Qt's own table for tools that follow objects
// NOLINTNEXTLINE(bugprone-reserved-identifier): the sanitizers' name
extern "C" std::size_t __sanitizer_get_current_allocated_bytes() __attribute__((weak));

namespace
{

constexpr int addedHook = 3;
constexpr int removedHook = 4;

std::mutex objectMutex;
std::unordered_set<QObject *> &living()
{
    static auto *const set = new std::unordered_set<QObject *>; // objects die later than static ones
    return *set;
}

void noteAdded(QObject *object)
{
    const std::lock_guard<std::mutex> lock(objectMutex);
    living().insert(object);
}

void noteRemoved(QObject *object)
{
    const std::lock_guard<std::mutex> lock(objectMutex);
    living().erase(object);
}

QtMessageHandler previous = nullptr;
QStringList faults;
qint64 announced = 0;
void (*announcer)(int number) = nullptr;

void noteMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    // The platform's own; the one of a rate that was 0, whose timer's number is kept on purpose; and what the workbench
    // reports to a person who opens a file that is gone.
    static const QRegularExpression expected("^This plugin does not support |killTimer.*not valid|propagateSizeHints|"
                                             "is not there any more$|^No program opened ");
    if (type == QtFatalMsg) {
        previous(type, context, text);
    }
    if (PlotterWindow::announcesLogLine(text)) {
        ++announced;
        if (announcer != nullptr) {
            announcer(text.section("new line: ", 1).section(QLatin1Char(';'), 0, 0).trimmed().toInt());
        }
    } else if ((type == QtWarningMsg || type == QtCriticalMsg) && !expected.match(text).hasMatch()) {
        faults.append(text);
    }
}

} // namespace

void Watch::install()
{
    previous = qInstallMessageHandler(noteMessage);
    qtHookData[addedHook] = reinterpret_cast<quintptr>(&noteAdded);
    qtHookData[removedHook] = reinterpret_cast<quintptr>(&noteRemoved);
}

QStringList Watch::takeFaults()
{
    return std::exchange(faults, {});
}

qint64 Watch::announcedLines()
{
    return announced;
}

void Watch::setAnnouncer(void (*announce)(int number))
{
    announcer = announce;
}

QMap<QByteArray, int> Watch::objects()
{
    const std::lock_guard<std::mutex> lock(objectMutex);
    QMap<QByteArray, int> counts;
    for (const QObject *const object : living()) {
        ++counts[object->metaObject()->className()];
    }
    return counts;
}

int Watch::objectCount()
{
    const std::lock_guard<std::mutex> lock(objectMutex);
    return static_cast<int>(living().size());
}

QString Watch::growth(const QMap<QByteArray, int> &before, const QMap<QByteArray, int> &now)
{
    // Qt makes one of each when it is first needed, and keeps it.
    static const QList<QByteArray> kept{
        "QAbstractItemModel",       "QAccessibleCache", "QClipboard",   "QFactoryLoader", "QFusionStyle",
        "QGestureManager",          "QInputMethod",     "QMimeData",    "QObject",        "QPMCache",
        "QPlatformNativeInterface", "QStyleHints",      "QWindowsStyle"};
    constexpr int keptOfEach = 2;
    QStringList more;
    for (auto entry = now.cbegin(); entry != now.cend(); ++entry) {
        const int difference = entry.value() - before.value(entry.key());
        if (difference > (kept.contains(entry.key()) ? keptOfEach : 0)) {
            more.append(QStringLiteral("%1 %2").arg(difference).arg(QString::fromLatin1(entry.key())));
        }
    }
    return more.join(", ");
}

qint64 Watch::heapBytes()
{
    if (&__sanitizer_get_current_allocated_bytes != nullptr) {
        return static_cast<qint64>(__sanitizer_get_current_allocated_bytes());
    }
#if __GLIBC_PREREQ(2, 33)
    const auto info = mallinfo2();
#else
    const auto info = mallinfo();
#endif
    return static_cast<qint64>(info.uordblks) + static_cast<qint64>(info.hblkhd);
}

qint64 Watch::residentBytes()
{
    QFile file("/proc/self/statm");
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE) : 0;
}

int Watch::descriptors()
{
    return QDir("/proc/self/fd").entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
}

int Watch::timers()
{
    const QAbstractEventDispatcher *const dispatcher = QAbstractEventDispatcher::instance();
    const std::lock_guard<std::mutex> lock(objectMutex);
    int count = 0;
    for (QObject *const object : living()) {
        count += dispatcher->registeredTimers(object).size();
    }
    return count;
}

void Watch::settle(int ms)
{
    for (int round = 0; round < 3; ++round) {
        QThread::msleep(static_cast<unsigned long>(ms / 3));
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}
