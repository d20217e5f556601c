#include "LogFile.h"

#include <QFile>
#include <QTextStream>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#ifdef Q_OS_UNIX

namespace
{

int openedWithoutWaiting(const QByteArray &name, int access)
{
    constexpr mode_t permissions = 0666; // less the user's mask
    return ::open(name.constData(), access | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, permissions);
}

bool isFifo(int descriptor)
{
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 && S_ISFIFO(status.st_mode);
}

bool setBlocking(int descriptor)
{
    return ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) & ~O_NONBLOCK) == 0;
}

} // namespace

bool LogFile::open(QIODevice::OpenMode mode)
{
    const QByteArray name = QFile::encodeName(m_name);
    const bool isReadable = (mode & QIODevice::ReadOnly) != 0;
    int descriptor = openedWithoutWaiting(name, isReadable ? O_RDWR : O_WRONLY | O_TRUNC);
    // Checked by the descriptor: the file cannot be replaced between opening and check.
    if (descriptor >= 0 && isReadable && isFifo(descriptor)) {
        // Opened for reading, too, a FIFO would need no reader, and lose what is written.
        ::close(descriptor);
        descriptor = openedWithoutWaiting(name, O_WRONLY);
    }
    if (descriptor < 0) {
        return false;
    }
    // A FIFO stays non-blocking: its reader may stall.
    if ((!isFifo(descriptor) && !setBlocking(descriptor)) ||
        !m_file->open(descriptor, mode, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return false;
    }
    return true;
}

#else

bool LogFile::open(QIODevice::OpenMode mode)
{
    return m_file->open(mode);
}

#endif

LogFile::LogFile(QFile *file, QIODevice::OpenMode mode) : m_file(file), m_name(file->fileName())
{
    open(mode);
}

LogFile::~LogFile()
{
    m_file->close();
    m_file->setFileName(m_name); // opening by a descriptor has cleared the name
}

bool LogFile::isOpen() const
{
    return m_file->isOpen();
}

bool LogFile::append(const QString &text)
{
    const qint64 sizeBefore = m_file->size();
    if (!m_file->isSequential()) {
        m_file->seek(sizeBefore);
    }
    QTextStream stream(m_file);
    stream << text;
    stream.flush();
    const bool isWritten = m_file->flush();
    m_file->close();
    if (!isWritten) {
        QFile::resize(m_name, sizeBefore); // the next line would continue a partial one
    }
    return isWritten;
}
