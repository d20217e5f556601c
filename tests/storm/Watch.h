#pragma once

#include <QByteArray>
#include <QMap>
#include <QStringList>

/// Observes this process: its messages, its QObjects, its memory. One per process; GUI thread unless noted.
namespace Watch
{

/// Begins; objects that are older are not counted.
void install();

/// Warnings and critical messages since the last call that nobody has to expect.
QStringList takeFaults();

/// Lines of recordings that plugins have announced through the logger since install().
qint64 announcedLines();
/// Called for each of these lines, as soon as it is announced; may be empty.
void setAnnouncer(void (*announce)(int number));

/// Living QObjects by class.
QMap<QByteArray, int> objects();
int objectCount();
/// What \a now has more of than \a before; one line, empty when there is nothing.
QString growth(const QMap<QByteArray, int> &before, const QMap<QByteArray, int> &now);

qint64 heapBytes(); ///< allocated and not freed
qint64 residentBytes();
int descriptors(); ///< open file descriptors
int timers();      ///< timers of all living objects

/// Lets everything run that was posted or waits for a timer of up to \a ms.
void settle(int ms = 30);

} // namespace Watch
