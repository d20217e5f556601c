#include "logging/WriteObstacle.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace
{

constexpr qint64 minimumFreeBytes = 4096; // a block: with less, not even a line is sure to fit

struct WriteObstacleText
{
    Q_DECLARE_TR_FUNCTIONS(WriteObstacle)
};

#ifdef Q_OS_UNIX
/// Whether opening \a path for writing would block until the other end of a pipe is opened.
bool isPipeWithoutReader(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat status = {};
    if (stat(name.constData(), &status) != 0 || !S_ISFIFO(status.st_mode)) {
        return false;
    }
    const int descriptor = open(name.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        return errno == ENXIO;
    }
    close(descriptor);
    return false;
}
#else
bool isPipeWithoutReader(const QString &)
{
    return false;
}
#endif

/// Where \a path leads to, with all links followed, also those of a file that does not exist yet.
QString destinationOf(const QString &path)
{
    constexpr int maximumLinks = 40; // as many as Linux follows; a loop of links leads nowhere
    QString destination = path;
    for (int i = 0; i < maximumLinks && QFileInfo(destination).isSymLink(); ++i) {
        destination = QFileInfo(destination).symLinkTarget();
    }
    const QFileInfo file(destination);
    if (file.exists()) {
        return file.canonicalFilePath();
    }
    const QString folder = QFileInfo(file.absolutePath()).canonicalFilePath();
    return folder.isEmpty() ? QDir::cleanPath(file.absoluteFilePath()) : QDir(folder).filePath(file.fileName());
}

} // namespace

QString writeObstacle(const QString &path)
{
    const QFileInfo file(path);
    const QFileInfo folder(file.absolutePath());
    if (file.isDir()) {
        return WriteObstacleText::tr("it is a folder");
    }
    if (!folder.isDir()) {
        return WriteObstacleText::tr("there is no such folder");
    }
    if (file.exists() ? !file.isWritable() : !folder.isWritable()) {
        return WriteObstacleText::tr("writing is not allowed");
    }
    if (isPipeWithoutReader(path)) {
        return WriteObstacleText::tr("nobody reads from this pipe");
    }
    const QStorageInfo storage(folder.absoluteFilePath());
    if (storage.isValid() && storage.isReadOnly()) {
        return WriteObstacleText::tr("the file system is read-only");
    }
    if (storage.isValid() && storage.bytesTotal() > 0 && storage.bytesAvailable() < minimumFreeBytes) {
        return WriteObstacleText::tr("the disk is full");
    }
    return {};
}

QString replaceObstacle(const QString &path)
{
    const QFileInfo file(path);
    if (file.exists() && !file.isFile() && !file.isDir()) {
        return WriteObstacleText::tr("it is a device or a pipe, no file that could be replaced");
    }
    return writeObstacle(path);
}

bool isSameFile(const QString &one, const QString &other)
{
#if defined(Q_OS_WIN) || defined(Q_OS_MACOS)
    constexpr Qt::CaseSensitivity caseOfNames = Qt::CaseInsensitive;
#else
    constexpr Qt::CaseSensitivity caseOfNames = Qt::CaseSensitive;
#endif
    return destinationOf(one).compare(destinationOf(other), caseOfNames) == 0;
}
