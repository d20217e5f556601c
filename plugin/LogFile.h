#pragma once

#include <QIODevice>
#include <QString>

class QFile;

/**
 * Writes to the file of a recording: open from construction until append() or destruction.
 *
 * Neither opening nor writing waits for the reader of a FIFO: without a reader the FIFO is a file that cannot be
 * opened, and what a stalled reader leaves no room for is not written. To be used as a local variable; GUI thread.
 */
class LogFile
{
public:
    /// Opens \a file (not owned) in \a mode by its name; see isOpen().
    LogFile(QFile *file, QIODevice::OpenMode mode);
    ~LogFile();

    bool isOpen() const;

    /**
     * Appends \a text and closes the file.
     * \return false when \a text could not be written completely, as on a full disk; the file then has its previous
     *         size
     */
    bool append(const QString &text);

private:
    Q_DISABLE_COPY(LogFile)

    bool open(QIODevice::OpenMode mode);

    QFile *const m_file;
    const QString m_name;
};
