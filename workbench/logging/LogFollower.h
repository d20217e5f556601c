#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

/**
 * Follows a CSV log while somebody else writes it: reads what was added since the last look, and keeps count.
 *
 * Nothing is written and nothing stays open between two looks.
 */
class LogFollower
{
public:
    explicit LogFollower(const QString &path = QString());

    /// Reads on from where the last look ended.
    void poll();

    QString path() const;
    bool isThere() const;     ///< at the last look
    bool isRegular() const;   ///< or not there; devices, pipes and files without the right to read cannot be read back
    bool hasHeader() const;   ///< the file begins as a log does
    bool wasReplaced() const; ///< it vanished, shrank or begins otherwise than at an earlier look
    qint64 bytes() const;
    int dataLines() const; ///< complete lines in it behind the header
    /// When lines were last seen to have been added; invalid before the first one.
    QDateTime lastLineTime() const;

private:
    void beginAnew();

    QString m_path;
    QByteArray m_start; // the first bytes, to recognise another file of the same name
    QDateTime m_lastLineTime;
    qint64 m_bytes = 0; // read so far
    int m_lines = 0;    // ends of lines read so far, the header's included
    bool m_isThere = false;
    bool m_isRegular = false;
    bool m_wasReplaced = false;
};
