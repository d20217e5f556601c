// How often Modbus devices are read, and for how long an exchange holds the caller, beside what the line allows.

#include "FaultyLine.h"
#include "ModbusProbe.h"
#include "Timing.h"

#include "modules/modbus/ReadPlan.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTextStream>
#include <QThread>

#include <memory>

namespace
{

constexpr int sampleIntervalMs = 14; // of the plugin
constexpr int warmUpMs = 1500;
constexpr int aheadCount = 40;    // of two registers each
constexpr int aheadDistance = 20; // registers
constexpr double nsPerMs = 1e6;
constexpr int paritylessBitsPerByte = 10;
constexpr int frameBytes = 8 + 5; // of request and answer, without the payload
constexpr int bytesPerRegister = 2;
constexpr double silenceBytes = 3.5;
constexpr double minimumSilenceMs = 1.75;

struct Line
{
    QString name;
    int baud = 0; ///< 0: over TCP
};

/// Pairs of registers: of four curves X and Y, or of one.
QVector<RegisterSpan> pairs(int count, int distance)
{
    QVector<RegisterSpan> spans;
    for (int index = 0; index < count; ++index) {
        spans.append({ModbusTable::HoldingRegister, static_cast<quint16>(10 + index * distance), 2});
    }
    return spans;
}

/// Rounds per second that a serial line carries when the device answers at once.
double allowed(const QVector<RegisterSpan> &spans, const ConnectionSettings &settings)
{
    const double byteMs = 1000.0 * paritylessBitsPerByte / settings.baud;
    const double silenceMs = qMax(minimumSilenceMs, silenceBytes * byteMs);
    double roundMs = 0;
    const ReadPlan plan(spans, LineCost::of(settings));
    for (const RegisterSpan &request : plan.requests()) {
        roundMs += (frameBytes + request.count * bytesPerRegister) * byteMs + silenceMs;
    }
    return 1000.0 / roundMs;
}

QStringList measured(const Line &line, const QVector<RegisterSpan> &spans, const QString &what, int durationMs,
                     const SurveyedSpans &surveyed = {})
{
    std::unique_ptr<FaultyLine> terminals;
    std::unique_ptr<ModbusServer> server;
    ConnectionSettings settings;
    if (line.baud > 0) {
        // A pseudo-terminal has no rate: what lies between passes the bytes on as slowly as a line of that rate.
        terminals = std::make_unique<FaultyLine>();
        terminals->baud = line.baud;
        server = std::make_unique<ModbusServer>(terminals->serverPort(), line.baud);
        settings = ModbusProbe::serial(terminals->clientPort(), line.baud);
    } else {
        server = std::make_unique<ModbusServer>();
        settings = ModbusProbe::tcp(server->port());
    }
    ModbusProbe probe(settings, spans, surveyed);
    QElapsedTimer timer;
    timer.start();
    qint64 longestNs = 0;
    int exchanges = 0;
    int fresh = 0;
    qint32 lastValue = 0;
    while (timer.elapsed() < warmUpMs + durationMs) {
        const bool isCounted = timer.elapsed() >= warmUpMs;
        QElapsedTimer exchange;
        exchange.start();
        const bool isAnswered = probe.ask();
        if (isCounted) {
            longestNs = qMax(longestNs, exchange.nsecsElapsed());
            exchanges += isAnswered ? 1 : 0;
            fresh += isAnswered && probe.reply(0).value() != lastValue ? 1 : 0;
        }
        lastValue = probe.reply(0).value();
        QThread::msleep(sampleIntervalMs);
    }
    const double rounds = probe.channel.state().answersPerSecond;
    const double limit = line.baud > 0 ? allowed(spans, settings) : 0.0;
    const auto perSecond = [durationMs](int count) { return QString::number(count * 1000.0 / durationMs, 'f', 0); };
    return {line.name,
            what,
            QString::number(ReadPlan(spans, LineCost::of(settings)).requests().size()),
            QString::number(rounds, 'f', rounds < 100 ? 1 : 0),
            limit > 0 ? QString::number(limit, 'f', 1) : QStringLiteral("1000 (pause of 1 ms)"),
            perSecond(exchanges),
            perSecond(fresh),
            inMs(static_cast<double>(longestNs) / nsPerMs)};
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Measures how often Modbus devices are read."));
    parser.addHelpOption();
    const QCommandLineOption quick(QStringLiteral("quick"), QStringLiteral("Two seconds for each line."));
    const QCommandLineOption docs(QStringLiteral("docs"), QStringLiteral("Writes performance-modbus.md there."),
                                  QStringLiteral("folder"));
    // Those of the other chapters, so that all take the same command line.
    const QCommandLineOption only(QStringLiteral("only"), QString(), QStringLiteral("chapter"));
    const QCommandLineOption before(QStringLiteral("before"), QString(), QStringLiteral("file"));
    const QCommandLineOption save(QStringLiteral("save"), QString(), QStringLiteral("file"));
    parser.addOptions({quick, docs, only, before, save});
    parser.process(application);

    const int durationMs = parser.isSet(quick) ? 2000 : 10000;
    QVector<QStringList> rows{{QStringLiteral("Line"), QStringLiteral("Read"), QStringLiteral("Requests"),
                               QStringLiteral("Rounds/s"), QStringLiteral("Line allows"), QStringLiteral("Samples/s"),
                               QStringLiteral("new ones"), QStringLiteral("Longest block")}};
    const QVector<Line> lines{{QStringLiteral("TCP, loopback"), 0},
                              {QStringLiteral("19,200 baud"), 19200},
                              {QStringLiteral("115,200 baud"), 115200}};
    for (const Line &line : lines) {
        rows.append(measured(line, pairs(2, 2), QStringLiteral("X and Y, joined"), durationMs));
        rows.append(measured(line, pairs(2, 2), QStringLiteral("X and Y, and 40 values ahead"), durationMs,
                             {pairs(aheadCount, aheadDistance), {}}));
        rows.append(measured(line, pairs(2, 400), QStringLiteral("X and Y, far apart"), durationMs));
        rows.append(measured(line, pairs(8, 2), QStringLiteral("four curves, joined"), durationMs));
        rows.append(measured(line, pairs(8, 126), QStringLiteral("four curves, far apart"), durationMs));
    }
    const QString text =
        QStringLiteral(
            "# How often Modbus devices are read\n\n"
            "Written by `bench/run --only modbus --docs docs`. One device, whose values are sampled every %1 ms "
            "besides the time\nof the exchange. A round reads all values; the line allows as many rounds as "
            "its bytes and silences take with a device\nthat answers at once. A sample is new when its round "
            "is. The longest block is that of one exchange.\nValues read ahead take a tenth of the line's time at "
            "most.\n\n")
            .arg(sampleIntervalMs) +
        table(rows);
    QTextStream(stdout) << text;
    if (parser.isSet(docs)) {
        QFile file(parser.value(docs) + QStringLiteral("/performance-modbus.md"));
        if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0) {
            QTextStream(stderr) << file.fileName() << ": " << file.errorString() << '\n';
            return 1;
        }
    }
    return 0;
}
