#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

/// Something that reads files that come from others. A new reader is a new row in Readers.cpp.
struct Reader
{
    const char *name;
    QByteArray (*sample)(); ///< a valid file
    /// Reads \a bytes, a file as such, as far as a person can get it read; returns one line that says why it is refused,
    /// or an empty text.
    QString (*read)(const QByteArray &bytes);
    QString (*readFile)(const QString &path); ///< null when no path is read
    bool trustsFile = false; ///< Qt's own reader, which may crash: its files come with the program or a plugin
};

const std::vector<Reader> &readers();
