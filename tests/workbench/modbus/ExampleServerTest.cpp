#include "GuardedTest.h"
#include "OtherPrograms.h"

#include <arpa/inet.h>
#include <cmath>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace
{

constexpr int exampleStartLimitMs = 30000;
constexpr int exampleRunLimitMs = 90000;
constexpr double periodSeconds = 2.0;
constexpr double amplitude = 100000.0; // increments, of the server's motor
constexpr double twoPi = 6.283185307179586;

const QString exampleFolder = SOURCE_FOLDER "/examples/modbus/";

using Pair = QPair<qint32, qint32>;

/// A port of the loopback that nobody uses now.
int freePort()
{
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof(address);
    auto *const generic = reinterpret_cast<sockaddr *>(&address);
    REQUIRE(bind(listener, generic, size) == 0 && getsockname(listener, generic, &size) == 0);
    close(listener);
    return ntohs(address.sin_port);
}

/// Without the carriage returns of a log.
QList<QByteArray> plainLinesOf(const QString &path)
{
    QByteArrayList lines = linesOf(path);
    REQUIRE(!lines.isEmpty());
    for (QByteArray &line : lines) {
        line.replace("\r", "");
    }
    return lines;
}

/// A number of 32 bit, its high word first, from words in hexadecimal.
qint32 numberAt(const QList<QByteArray> &words, int index)
{
    return qint32((words.at(index).toUInt(nullptr, 16) << 16U) | words.at(index + 1).toUInt(nullptr, 16));
}

/// Position and velocity in each answer that the server has recorded as "time,table,address,words".
QSet<Pair> recordedPairs(const QString &path)
{
    constexpr int position = 0x6064;
    constexpr int velocity = 0x606C;
    QSet<Pair> pairs;
    const QList<QByteArray> lines = plainLinesOf(path);
    for (const QByteArray &line : lines) {
        const QList<QByteArray> columns = line.split(',');
        if (columns.size() == 4 && columns.at(1) == "holding register") {
            const QList<QByteArray> words = columns.at(3).split(' ');
            const int address = columns.at(2).toInt(nullptr, 0);
            if (address <= position && address + words.size() >= velocity + 2) {
                pairs.insert({numberAt(words, position - address), numberAt(words, velocity - address)});
            }
        }
    }
    return pairs;
}

} // namespace

/// The example server and its register map, as a newcomer meets them: started, drawn and recorded.
class ExampleServerTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void circleIsDrawnAndLogged()
    {
        const QString python = pythonWithServer();
        SKIP_WITHOUT(!python.isEmpty(), "pymodbus");
        const QString record = temporaryPath("record.csv");
        const QString picture = temporaryPath("picture.png");
        QProcess server;
        const QString port = started(&server, python, {"--period", QString::number(periodSeconds), "--record", record});
        const QList<QByteArray> lines =
            loggedLines(port, exampleFolder + "servo-drive.json", "4", {"--picture", picture});
        server.kill();
        QVERIFY(server.waitForFinished());

        const QSet<Pair> answered = recordedPairs(record);
        QVERIFY(lines.at(1).contains("Actual position [increments];Actual velocity [increments/s]"));
        QSet<int> quadrants;
        const QVector<Pair> pairs = pairsIn(lines);
        for (const Pair &pair : pairs) {
            const QString text = QString("%1;%2").arg(pair.first).arg(pair.second);
            QVERIFY2(answered.contains(pair), qPrintable(text)); // both of one answer
            const double x = pair.first / amplitude;
            const double y = pair.second / (amplitude * twoPi / periodSeconds);
            QVERIFY2(std::abs(std::hypot(x, y) - 1.0) < 1e-4, qPrintable(text));
            quadrants.insert((x < 0 ? 1 : 0) + (y < 0 ? 2 : 0));
        }
        QVERIFY2(pairs.size() >= 20, qPrintable(QString::number(pairs.size())));
        QCOMPARE(quadrants.size(), 4);
        QVERIFY(!QImage(picture).isNull());
    }

    /// One register holds still, the other one counts up: what is logged lies between what is read before and after.
    void anotherClientReadsWhatIsLogged()
    {
        const QString python = pythonWithServer();
        SKIP_WITHOUT(!python.isEmpty(), "pymodbus");
        const QString client = QStandardPaths::findExecutable("mbpoll");
        SKIP_WITHOUT(!client.isEmpty(), "mbpoll");
        const QString map = temporaryPath("map.json");
        QFile file(map);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(R"({ "title": "Clock", "values": [
            { "name": "Status word", "table": "holding register", "address": 7, "type": "uint16", "axis": 0 },
            { "name": "Operating time", "table": "input register", "address": 300, "type": "uint32", "scale": 0.01,
              "unit": "s", "axis": 0 } ] })");
        file.close();
        QProcess server;
        const QString port = started(&server, python, {"--map", map});
        const auto polled = [&](const char *type, const char *address) {
            QProcess process;
            process.start(client, {"-1", "-0", "-q", "-B", "-t", type, "-r", address, "-p", port, "127.0.0.1"});
            REQUIRE(process.waitForFinished());
            const QString text = QString::fromLatin1(process.readAllStandardOutput());
            const QRegularExpression pattern(QString("\\[%1\\]:\\s*([0-9]+)").arg(address));
            const auto match = pattern.match(text);
            REQUIRE(match.hasMatch());
            return match.captured(1).toInt();
        };
        const int still = polled("4", "7");
        int last = polled("3:int", "300");
        const QVector<Pair> pairs = pairsIn(loggedLines(port, map, "2", {}));
        const int after = polled("3:int", "300");
        QVERIFY2(still > 0 && pairs.size() >= 20, qPrintable(QString::number(pairs.size())));
        for (const Pair &pair : pairs) {
            QCOMPARE(pair.first, still);
            QVERIFY(pair.second >= last && pair.second <= after);
            last = pair.second;
        }
        server.kill();
        QVERIFY(server.waitForFinished());
    }

private:
    /// Starts the server at a free port, which is returned.
    static QString started(QProcess *server, const QString &python, const QStringList &options)
    {
        QString port = QString::number(freePort());
        server->start(python, QStringList{exampleFolder + "motor-server.py", "--tcp", port} + options);
        REQUIRE(server->waitForReadyRead(exampleStartLimitMs));
        return port;
    }

    /// What the program logs of the device's first curve.
    QList<QByteArray> loggedLines(const QString &port, const QString &map, const QString &seconds,
                                  const QStringList &options) const
    {
        const QString log = temporaryPath("log.csv");
        QProcess workbench;
        workbench.setProcessChannelMode(QProcess::ForwardedChannels);
        workbench.start(PROGRAM, QStringList{"--plugin", PLUGIN, "--device",
                                             QString("modbus-tcp:127.0.0.1:%1/1,%2").arg(port, map), "--seconds",
                                             seconds, "--log", log, "--language", "en"} +
                                     options);
        REQUIRE(workbench.waitForFinished(exampleRunLimitMs) && workbench.exitCode() == 0);
        return plainLinesOf(log);
    }

    static QVector<Pair> pairsIn(const QList<QByteArray> &lines)
    {
        QVector<Pair> pairs;
        const QList<QByteArray> dataLines = lines.mid(2);
        for (const QByteArray &line : dataLines) {
            const QList<QByteArray> columns = line.split(';');
            if (columns.size() >= 3) {
                pairs.append({columns.at(1).toInt(), columns.at(2).toInt()});
            }
        }
        return pairs;
    }
};

GUARDED_TEST(ExampleServerTest)
#include "ExampleServerTest.moc"
