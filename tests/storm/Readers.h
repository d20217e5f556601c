#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

/// Of a regular file; empty when it cannot be read.
QByteArray contentOf(const QString &path);

/// Something that reads files that come from others. A new reader is a new row in Readers.cpp.
struct Reader
{
    const char *name;
    QByteArray (*sample)(); ///< a valid file
    /// Reads \a bytes, a file as such, as far as a person can get it read; returns one line that says why it is refused,
    /// or an empty text.
    QString (*read)(const QByteArray &bytes);
    QString (*readFile)(const QString &path); ///< null when no path is read
    enum class Forked
    {
        No,
        Yes,     ///< each file in a process of its own
        MayCrash ///< and Qt trusts such a file, which comes with the program or a plugin
    } forked = Forked::No;
    int briefCount = 1000; ///< mutations in a run of all checks
};

QByteArray answerSample();
/// \a bytes: which table (2 bits), how many entries are asked for (7 bits), and all that the device answers.
QString readAnswer(const QByteArray &bytes);

const std::vector<Reader> &readers();
