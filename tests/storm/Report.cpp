#include "Report.h"

#include "Watch.h"

#include <QDate>
#include <QFile>
#include <QLocale>
#include <QSysInfo>
#include <QTextStream>
#include <QThread>

#include <algorithm>
#include <cstdio>

namespace
{

bool faultSeen = false;
QString rowFile;
QString rowVersion;

QString cells(const Row &row)
{
    QStringList texts{row.chapter, row.tried, QString::number(row.times), row.on,
                      (row.isFault ? "FAULT: " : QString()) + row.outcome};
    for (QString &text : texts) {
        text = text.simplified();
    }
    return texts.join(QLatin1Char('\t'));
}

QStringList linesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).split(QLatin1Char('\n')) : QStringList();
}

QString part(const QString &line, int index)
{
    return line.section(QLatin1Char('\t'), index, index);
}

/// In the order of the chapters, each in the order of its rows.
const char *const chapterOrder[] = {"events", "hotplug", "slow", "log", "life", "files", "fuzz", "day"};

const char introduction[] = R"(# Reliability

What was done to break the plugin and the workbench on purpose, and what came of it. This page is made by the program:
`bench/storm --hours N` (sources in `tests/storm/`). A smaller, fixed part runs in CI under address and
undefined-behaviour sanitizers (`.ci/storm`). Every fault ends the program with an exit code that is not 0; a failed
series of events prints its seed and a shortened sequence that shows the fault again. The last column is the commit that
the row was made with.
)";

const char notDone[] = R"(
## What is not tried

- Real displays, graphics drivers and native dialogs: everything runs on Qt's offscreen platform.
- Random events in `examples/second-host/`: it is another SDK that the program cannot be linked with. A bare window on
  the substitute's registry stands for a foreign host; `.ci/seam` drives the second host, in a fixed order.
- A change of the pixel ratio while a window is open: the ratio (1, 1.5 or 2) is fixed for each series of events.
- The picture right after the style of the whole program was changed: the boxes on the plot move to where another style
  wants them at the next change of size only, so this picture is not compared. Styles are changed elsewhere in a series.
- The same faults of a line twice: in every fourth series of random events some modules are devices behind lines that
  delay, split, drop, corrupt and repeat answers, in real time. A seed replays the events of such a series, but not what
  was on the wire at each of them. The other series replay the same events; how many lines are recorded may differ.
- A file system that does not answer at all, such as a dead network drive: a write to a regular file waits in the
  system for as long as the drive is dead, and the window with it (see the chapter "log", and `docs/real-host.md`).
- Power loss: a line survives the end of the process, not that of the system before the disk has it.
- One run of everything on one build: the last column has the commit of each row.
- An idle machine: times in the tables are those of the machine and of what else it did.
- Leaks under the fuzzer: Qt's own reader of JSON leaves half a kilobyte behind for some files that end in a text.
- Settings with values of types that the workbench does not write ("@Variant", "@DateTime"): Qt's own reader asks for
  whatever memory such a value says.
- Broken compiled translations: Qt's own reader crashes over a few of 20,000. They come with the program or with a
  plugin, and are trusted as these are.
)";

} // namespace

void Report::add(Row row)
{
    const QStringList warnings = Watch::takeFaults();
    row.isFault = row.isFault || !warnings.isEmpty();
    row.outcome = (QStringList(row.outcome) + warnings).join(QLatin1Char(' '));
    faultSeen = faultSeen || row.isFault;
    std::puts(qPrintable(cells(row)));
    std::fflush(stdout);
    if (rowFile.isEmpty()) {
        return;
    }
    QFile file(rowFile);
    if (file.open(QIODevice::Append)) {
        file.write(QString(cells(row) + QLatin1Char('\t') + rowVersion + QLatin1Char('\n')).toUtf8());
    }
}

Row Report::row(const QString &line)
{
    const QString mark = "FAULT: ";
    QString outcome = part(line, 4).trimmed();
    const bool isFault = outcome.startsWith(mark);
    outcome.remove(0, isFault ? mark.size() : 0);
    return {part(line, 0), part(line, 1), part(line, 2).toLongLong(), part(line, 3), outcome, isFault};
}

bool Report::hasFault()
{
    return faultSeen;
}

void Report::setFile(const QString &path, const QString &version)
{
    rowFile = path;
    rowVersion = version;
}

void Report::begin(const QString &chapter)
{
    if (rowFile.isEmpty()) {
        return;
    }
    QStringList lines = linesOf(rowFile);
    const auto isOld = [&](const QString &line) { return line.isEmpty() || part(line, 0) == chapter; };
    lines.erase(std::remove_if(lines.begin(), lines.end(), isOld), lines.end());
    lines.append(QString());
    QFile file(rowFile);
    file.open(QIODevice::WriteOnly);
    file.write(lines.join(QLatin1Char('\n')).toUtf8());
}

QString Report::document(const QString &path)
{
    QString text;
    QTextStream out(&text);
    out << introduction << "\nMade on " << QDate::currentDate().toString(Qt::ISODate) << ": "
        << QSysInfo::prettyProductName() << ", " << QSysInfo::currentCpuArchitecture() << ", Qt " << qVersion() << ", "
        << QThread::idealThreadCount() << " processors.\n";
    const QStringList lines = linesOf(path);
    for (const char *const chapter : chapterOrder) {
        out << "\n## " << chapter
            << "\n\n| What was tried | How often | On what | What came of it | With |\n|---|---|---|---|---|\n";
        int rows = 0;
        for (const QString &line : lines) {
            if (part(line, 0) != chapter) {
                continue;
            }
            ++rows;
            out << "| " << part(line, 1) << " | " << QLocale::c().toString(part(line, 2).toLongLong()) << " | "
                << part(line, 3) << " | " << part(line, 4) << " | " << part(line, 5) << " |\n";
        }
        if (rows == 0) {
            out << "| nothing in this run | | | | |\n";
        }
    }
    out << notDone;
    out.flush();
    return text;
}
