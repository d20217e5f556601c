#include "LogFile.h"

#include <QFile>
#include <QTextStream>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#ifdef Q_OS_UNIX

bool LogFile::open(QIODevice::OpenMode mode)
{
    constexpr mode_t permissions = 0666; // less the user's mask
    const int access = (mode & QIODevice::ReadOnly) != 0 ? O_RDWR : O_WRONLY | O_TRUNC;
    // Opened without blocking and checked by its descriptor: the file cannot be replaced between check and opening.
    const int descriptor = ::open(QFile::encodeName(m_name).constData(),
                                  access | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, permissions);
    if (descriptor < 0) {
        return false;
    }
    struct stat status = {};
    const bool isFifo = ::fstat(descriptor, &status) == 0 && S_ISFIFO(status.st_mode);
    const bool isBlocking = ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) & ~O_NONBLOCK) == 0;
    if (isFifo || !isBlocking || !m_file->open(descriptor, mode, QFileDevice::AutoCloseHandle)) {
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
