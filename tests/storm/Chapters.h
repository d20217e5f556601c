#pragma once

#include "Report.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

/// The chapters of the storm; each adds its rows to the report.
namespace Chapters
{

void events(const Sizes &sizes);
void hotplug(const Sizes &sizes);
void slow(const Sizes &sizes);
void log(const Sizes &sizes);
void life(const Sizes &sizes);
void files(const Sizes &sizes);
void day(const Sizes &sizes);

/// What a chapter lets another process of this program do: the first argument says what, the others how.
/// \return the process's exit code
int child(const QStringList &arguments);
int playEvents(const QStringList &arguments);
int recordLines(const QStringList &arguments);
int pace(const QStringList &arguments);
int readFile(const QStringList &arguments);

} // namespace Chapters

/// What became of a process of this program.
struct Ended
{
    bool isCrash = false; ///< by a signal or a time-out
    int exitCode = 0;     ///< or the number of the signal
    QByteArray output;    ///< standard output
    QByteArray errors;    ///< the end of standard error
    qint64 milliseconds = 0;
};

/// Runs this program with \a arguments; \a environment has additions of the form NAME=value.
Ended runChild(const QStringList &arguments, int timeoutMs, const QStringList &environment = {});
