// Lets faults happen to devices, a third of them on serial lines, until so many exchanges had one:
//     modbus_soak [FAULTS [DEVICES]]
// Ends with 1 and says what was wrong when one wrong value was given out. Made to be run under sanitizers.

#include "FaultyLine.h"
#include "ModbusProbe.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>
#include <QThread>

#include <cstdlib>
#include <memory>
#include <vector>

namespace
{

constexpr int baud = 115200;
constexpr int defaultFaults = 2000;
constexpr int defaultDevices = 36;
/// One answer in so many has a fault: others have to come through in between.
constexpr int faultInterval = 2;
constexpr unsigned long tickMs = 2;
/// A device that is not taken up again after this long ends the run. Much longer than two seconds: the machine is busy.
constexpr qint64 longestSilenceMs = 60000;

struct Device
{
    explicit Device(bool isSerial)
    {
        if (isSerial) {
            line = std::make_unique<FaultyLine>();
            server = std::make_unique<ModbusServer>(line->serverPort(), baud);
            // As a device does: an answer does not follow so closely on an older one that both are seen together.
            server->answerTimeMs = 5;
        } else {
            server = std::make_unique<ModbusServer>();
            line = std::make_unique<FaultyLine>(server->port());
        }
        line->lateMs = isSerial ? 450 : 650;
        line->randomFaultInterval = faultInterval;
        settings = isSerial ? ModbusProbe::serial(line->clientPort(), baud) : ModbusProbe::tcp(line->port());
        connect();
    }

    void connect()
    {
        const auto pairAt = [](quint16 address) { return RegisterSpan{ModbusTable::HoldingRegister, address, 2}; };
        probe = std::make_unique<ModbusProbe>(
            settings, QVector<RegisterSpan>{pairAt(10), pairAt(400)},
            SurveyedSpans{{pairAt(10), pairAt(20), pairAt(400), pairAt(800), pairAt(998), pairAt(1200)}, {}});
        lastAnswer.start();
    }

    std::unique_ptr<FaultyLine> line;
    std::unique_ptr<ModbusServer> server;
    ConnectionSettings settings;
    std::unique_ptr<ModbusProbe> probe;
    QElapsedTimer lastAnswer;
};

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const int wanted = argc > 1 ? std::atoi(argv[1]) : defaultFaults;
    const int deviceCount = argc > 2 ? std::atoi(argv[2]) : defaultDevices;
    QTextStream out(stdout);
    std::vector<std::unique_ptr<Device>> devices;
    devices.reserve(static_cast<size_t>(deviceCount));
    for (int index = 0; index < deviceCount; ++index) {
        devices.push_back(std::make_unique<Device>(index % 3 == 2));
    }
    qint64 faults = 0;
    qint64 answers = 0;
    unsigned random = 1;
    while (faults < wanted) {
        faults = 0;
        for (const auto &device : devices) {
            faults += device->line->faultCount;
            if (device->probe->ask()) {
                ++answers;
                device->lastAnswer.start();
            }
            const QString mistake =
                device->lastAnswer.hasExpired(longestSilenceMs)
                    ? QStringLiteral("no answer any more: ") + device->probe->channel.state().trouble
                    : device->probe->mistake();
            if (!mistake.isEmpty()) {
                out << device->settings.lineName() << ": " << mistake << '\n';
                return 1;
            }
            // Now and then a module is taken out, whatever its line is in the middle of.
            random = random * 1664525U + 1013904223U;
            if ((random >> 8) % 20000 == 0) {
                device->probe.reset();
                device->connect();
            }
        }
        QThread::msleep(tickMs);
    }
    out << faults << " faults, " << answers << " answers, none of them wrong\n";
    return answers > 0 ? 0 : 1;
}
