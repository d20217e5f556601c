#pragma once

#include <QIODevice>
#include <QString>

class QFile;

/**
 * The file of a recording while something is written to it: open from construction until append() or destruction.
 *
 * A FIFO counts as a file that cannot be opened: without a reader, opening it would wait for one and hold up the host,
 * and it cannot be opened again for each line. On the stack of one function; GUI thread.
 */
class LogFile
{
public:
    /// \param file is opened in \a mode under its name; not owned
    LogFile(QFile *file, QIODevice::OpenMode mode);
    ~LogFile();

    bool isOpen() const;

    /**
     * Appends \a text and closes the file.
     * \return false when not all of it could be written, as on a full disk; what was is cut off again
     */
    bool append(const QString &text);

private:
    Q_DISABLE_COPY(LogFile)

    bool open(QIODevice::OpenMode mode);

    QFile *const m_file;
    const QString m_name;
};
