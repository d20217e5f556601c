// Files from others, valid ones with mutations, huge ones and deep ones: one clear line, and nothing out of proportion.

#include "Chapters.h"
#include "Readers.h"
#include "Watch.h"
#include "window/PluginFile.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>
#include <random>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using Engine = std::mt19937;

const char *const tokens[] = {"{",       "}",        "[",    "]",     "\"",   ":",          ",",
                              "null",    "true",     "-1",   "1e999", "-0",   "2147483648", "99999999999999999999",
                              "\\u0000", "\xff\xfe", ";",    "\n",    "\r\n", "=",          "../../",
                              "%n",      "<",        "1;2;3"};

QByteArray mutated(QByteArray bytes, Engine *engine)
{
    const auto below = [engine](int limit) {
        return static_cast<int>((*engine)() % static_cast<quint32>(qMax(1, limit)));
    };
    for (int edits = 1 + below(8); edits > 0 && !bytes.isEmpty(); --edits) {
        const int at = below(bytes.size());
        const int length = 1 + below(below(4) == 0 ? bytes.size() : 12);
        switch (below(8)) {
        case 0:
            bytes[at] = static_cast<char>(bytes.at(at) ^ (1 << below(8)));
            break;
        case 1:
            bytes[at] = static_cast<char>(below(256));
            break;
        case 2:
            bytes.remove(at, length);
            break;
        case 3:
            bytes.insert(below(bytes.size()), bytes.mid(at, length));
            break;
        case 4:
            bytes.truncate(below(8) == 0 ? at : bytes.size());
            break;
        case 5: { // a number becomes another one
            int begin = at;
            while (begin < bytes.size() && !isdigit(static_cast<unsigned char>(bytes.at(begin)))) {
                ++begin;
            }
            bytes.replace(begin, 1, tokens[9 + below(5)]);
            break;
        }
        default:
            bytes.insert(at, tokens[below(static_cast<int>(std::size(tokens)))]);
        }
    }
    return bytes;
}

QString faultOf(const QString &error)
{
    constexpr int longestLine = 1000;
    return error.contains(QLatin1Char('\n')) ? "more than one line: " + error.left(200)
           : error.size() > longestLine      ? filled("a line of %1 characters: ", error.size()) + error.left(200)
                                             : QString();
}

/// Calls \a read in a process of its own; returns its exit status as waitpid() does.
int runForked(const std::function<QString()> &read, QString *error)
{
    int ends[2];
    if (pipe(ends) != 0) {
        return -1;
    }
    const pid_t child = fork();
    if (child == 0) {
        alarm(60);
        const QByteArray text = read().toUtf8();
        [[maybe_unused]] const auto written = write(ends[1], text.constData(), static_cast<std::size_t>(text.size()));
        _exit(0);
    }
    close(ends[1]);
    QFile reading;
    reading.open(ends[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    *error = QString::fromUtf8(reading.readAll());
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

/// What made a reader fail before.
QVector<QByteArray> findsOf(const Reader &reader)
{
    QVector<QByteArray> finds;
    const QString folder = CORPUS_FOLDER "/" + QString(reader.name).replace(' ', '-');
    const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files);
    for (const QFileInfo &info : files) {
        finds.append(contentOf(info.filePath()));
    }
    return finds;
}

void mutate(const Reader &reader, const Sizes &sizes)
{
    const int count = sizes.of(reader.briefCount, 20000);
    const bool mayCrash = reader.forked == Reader::Forked::MayCrash;
    Engine engine(sizes.seed);
    const QByteArray sample = reader.sample();
    const QTemporaryDir folder;
    QString fault = sample.isEmpty() ? "there is no valid file to begin with" : reader.read(sample);
    int accepted = 0;
    int crashes = 0;
    int faults = 0;
    qint64 slowestMs = 0;
    const QVector<QByteArray> finds = findsOf(reader);
    for (int index = 0; index < count; ++index) {
        const QByteArray bytes = index < finds.size() ? finds.at(index) : mutated(sample, &engine);
        QFile file(folder.filePath("last")); // is left after a crash
        file.open(QIODevice::WriteOnly);
        file.write(bytes);
        file.close();
        QElapsedTimer clock;
        clock.start();
        QString error;
        if (reader.forked == Reader::Forked::No) {
            error = reader.read(bytes);
        } else if (runForked([&] { return reader.read(bytes); }, &error) != 0) {
            ++crashes;
            error = mayCrash ? QString() : "the process\ncrashed";
            clock.start(); // sanitizers take their time for a report
        }
        slowestMs = qMax(slowestMs, clock.elapsed());
        accepted += error.isEmpty() ? 1 : 0;
        const QString bad = faultOf(error);
        if (!bad.isEmpty()) {
            ++faults;
            fault = filled("%1 times: %2", faults, bad);
        }
    }
    constexpr qint64 longestMs = 2000;
    Watch::takeFaults(); // of Qt's readers
    const QString ended =
        filled("; %1 ended the process: Qt trusts its files, which come with the program or a plugin", crashes);
    Report::add({"files", filled("mutated %1", reader.name), count,
                 reader.forked == Reader::Forked::No ? "the reader" : "the reader, in a process of its own each time",
                 filled("%1 accepted, %2 refused with one line each; slowest %3 ms %4",
                        accepted - (mayCrash ? crashes : 0), count - accepted, slowestMs, mayCrash ? ended : fault),
                 !fault.isEmpty() || slowestMs > longestMs});
}

/// Files whose size or depth must not cost time and memory out of proportion.
void exaggerate(const Reader &reader)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("large");
    constexpr int depth = 100000;
    constexpr qint64 gigabyte = 1 << 30;
    const QByteArray sample = reader.sample();
    struct Shape
    {
        const char *name;
        QByteArray content;
        qint64 size; ///< 0: that of the content; else filled with zeros
    };
    const Shape shapes[] = {{"100,000 opening brackets", QByteArray(depth, '['), 0},
                            {"100,000 objects inside one another", QByteArray("{\"a\":").repeated(depth), 0},
                            {"a line of 16 MB", QByteArray(16 << 20, ';'), 0},
                            {"a file of 1 GB that begins as a valid one", sample, gigabyte}};
    for (const Shape &shape : shapes) {
        QFile file(path);
        file.open(QIODevice::WriteOnly | QIODevice::Truncate);
        file.write(shape.content);
        if (shape.size > 0) {
            file.resize(shape.size);
        }
        file.close();
        const Ended ended = runChild({"read", reader.name, path}, 120000);
        const QList<QByteArray> words = ended.output.split('\n');
        const int megabytes = words.value(0).toInt() / 1024;
        const QString error = QString::fromUtf8(words.mid(1).join('\n')).trimmed().remove(QFileInfo(path).path() + '/');
        constexpr int longestMs = 20000;
        constexpr int maximumMegabytes = 600;
        const QString bad = ended.isCrash ? "the process crashed" : faultOf(error);
        Report::add(
            {"files", shape.name, 1, reader.name,
             filled("%1 ms, at most %2 MB of memory: %3", ended.milliseconds, megabytes,
                    bad.isEmpty() ? error.left(200) : bad),
             error.isEmpty() || !bad.isEmpty() || ended.milliseconds > longestMs || megabytes > maximumMegabytes});
    }
}

void cutPlugin(const Sizes &sizes)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("plugin.so");
    Engine engine(sizes.seed);
    int crashes = 0;
    const int cuts = sizes.of(15, 1000);
    for (int index = 0; index < cuts; ++index) {
        QFile::remove(path);
        QFile::copy(PLUGIN, path);
        QFile::resize(path, static_cast<qint64>(engine() % static_cast<quint32>(QFileInfo(path).size())));
        QString error;
        crashes += runForked([&path] { return PluginFile().load(path); }, &error) != 0 ? 1 : 0;
    }
    Report::add({"files", "plugins that are cut off at any place", cuts, "loading them, each in a process of its own",
                 filled("%1 ended the process in the system's loader, the others were refused or accepted: a plugin is "
                        "code, and trusted",
                        crashes)});
}

} // namespace

int Chapters::readFile(const QStringList &arguments)
{
    for (const Reader &reader : readers()) {
        if (arguments.at(0) == reader.name) {
            const QString error = reader.readFile(arguments.at(1));
            rusage usage{};
            getrusage(RUSAGE_SELF, &usage);
            std::printf("%ld\n%s\n", usage.ru_maxrss, qPrintable(error));
            return 0;
        }
    }
    return 2;
}

void Chapters::files(const Sizes &sizes)
{
    for (const Reader &reader : readers()) {
        mutate(reader, sizes);
        if (reader.readFile != nullptr) {
            exaggerate(reader);
        }
    }
    cutPlugin(sizes);
}
