#include "GuardedTest.h"

#include <QImage>
#include <QPair>
#include <QProcess>
#include <QSet>

#include <arpa/inet.h>
#include <cmath>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace
{

constexpr int startLimitMs = 30000;
constexpr int runLimitMs = 90000;
constexpr double periodSeconds = 2.0;
constexpr double amplitude = 100000.0; // increments, of the server's motor
constexpr double twoPi = 6.283185307179586;

using Pair = QPair<qint32, qint32>;

/// The Python that has what the server needs; the distribution's own, where another comes first in the path.
QString pythonWithServer()
{
    for (const QString &candidate : {QStringLiteral("python3"), QStringLiteral("/usr/bin/python3")}) {
        if (QProcess::execute(candidate, {QStringLiteral("-c"), QStringLiteral("try:\n import pymodbus.server\n"
                                                                               "except ImportError:\n exit(1)")}) ==
            0) {
            return candidate;
        }
    }
    return {};
}

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

QList<QByteArray> linesOf(const QString &path)
{
    QFile file(path);
    REQUIRE(file.open(QIODevice::ReadOnly));
    return file.readAll().replace("\r", "").split('\n');
}

/// A number of 32 bit, its high word first, from words in hexadecimal.
qint32 number(const QList<QByteArray> &words, int index)
{
    return qint32((words.at(index).toUInt(nullptr, 16) << 16U) | words.at(index + 1).toUInt(nullptr, 16));
}

/// Position and velocity in each answer that the server has recorded as "time,table,address,words".
QSet<Pair> recordedPairs(const QString &path)
{
    constexpr int position = 0x6064;
    constexpr int velocity = 0x606C;
    QSet<Pair> pairs;
    const QList<QByteArray> lines = linesOf(path);
    for (const QByteArray &line : lines) {
        const QList<QByteArray> columns = line.split(',');
        if (columns.size() == 4 && columns.at(1) == "holding register") {
            const QList<QByteArray> words = columns.at(3).split(' ');
            const int address = columns.at(2).toInt(nullptr, 0);
            if (address <= position && address + words.size() >= velocity + 2) {
                pairs.insert({number(words, position - address), number(words, velocity - address)});
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
        if (python.isEmpty()) {
            QVERIFY2(!qEnvironmentVariableIsSet("REQUIRE_MODBUS_SERVERS"), "pymodbus is missing");
            QSKIP("pymodbus is missing: cmake/install-dependencies.sh test-servers");
        }
        const QString port = QString::number(freePort());
        const QString record = temporaryPath(QStringLiteral("record.csv"));
        const QString log = temporaryPath(QStringLiteral("log.csv"));
        const QString picture = temporaryPath(QStringLiteral("picture.png"));
        const QString folder = QStringLiteral(SOURCE_FOLDER "/examples/modbus/");

        QProcess server;
        server.start(python,
                     {folder + QStringLiteral("motor-server.py"), QStringLiteral("--tcp"), port,
                      QStringLiteral("--period"), QString::number(periodSeconds), QStringLiteral("--record"), record});
        QVERIFY(server.waitForReadyRead(startLimitMs));
        QProcess workbench;
        workbench.setProcessChannelMode(QProcess::MergedChannels);
        workbench.start(QStringLiteral(PROGRAM),
                        {QStringLiteral("--plugin"), QStringLiteral(PLUGIN), QStringLiteral("--device"),
                         QStringLiteral("modbus-tcp:127.0.0.1:%1/1,%2servo-drive.json").arg(port, folder),
                         QStringLiteral("--seconds"), QStringLiteral("4"), QStringLiteral("--log"), log,
                         QStringLiteral("--picture"), picture, QStringLiteral("--language"), QStringLiteral("en")});
        QVERIFY(workbench.waitForFinished(runLimitMs));
        QVERIFY2(workbench.exitCode() == 0, workbench.readAll().constData());
        server.kill();
        QVERIFY(server.waitForFinished());

        const QSet<Pair> answered = recordedPairs(record);
        const QList<QByteArray> lines = linesOf(log);
        QVERIFY(lines.at(1).contains("Actual position [increments];Actual velocity [increments/s]"));
        QSet<int> quadrants;
        int logged = 0;
        const QList<QByteArray> dataLines = lines.mid(2);
        for (const QByteArray &line : dataLines) {
            const QList<QByteArray> columns = line.split(';');
            if (columns.size() < 3) {
                continue;
            }
            const Pair pair(columns.at(1).toInt(), columns.at(2).toInt());
            QVERIFY2(answered.contains(pair), line.constData()); // both of one answer
            const double x = pair.first / amplitude;
            const double y = pair.second / (amplitude * twoPi / periodSeconds);
            QVERIFY2(std::abs(std::hypot(x, y) - 1.0) < 1e-4, line.constData());
            quadrants.insert((x < 0 ? 1 : 0) + (y < 0 ? 2 : 0));
            ++logged;
        }
        QVERIFY2(logged >= 20, workbench.readAll().constData());
        QCOMPARE(quadrants.size(), 4);
        QVERIFY(!QImage(picture).isNull());
    }
};

GUARDED_TEST_MAIN(ExampleServerTest)
#include "ExampleServerTest.moc"
