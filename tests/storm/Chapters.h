#pragma once

#include "Report.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

/// The chapters of the storm; each adds its rows to the report.
namespace Chapters
{

using Chapter = void(const Sizes &sizes);
Chapter events, hotplug, slow, log, life, files, day;

/// What a chapter lets another process of this program do: the first argument says what, the others how; returns the
/// process's exit code.
using ChildTask = int(const QStringList &arguments);
ChildTask child, playEvents, recordLines, pace, readFile;

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
