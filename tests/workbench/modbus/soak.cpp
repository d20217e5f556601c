// Lets faults happen to devices, a third of them on serial lines, until so many exchanges had one:
//     modbus_soak [FAULTS [DEVICES]]
// Ends with 1 and says what was wrong when one wrong value was given out. Made to be run under sanitizers.

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

constexpr int defaultFaults = 2000;
constexpr int defaultDevices = 36;
/// One answer in so many has a fault: others have to come through in between.
constexpr int faultInterval = 2;
constexpr unsigned long tickMs = 2;
/// A device without an answer for this long ends the run. Much longer than two seconds, as the machine is busy.
constexpr qint64 longestSilenceMs = 60000;

struct SoakedDevice : FaultyDevice
{
    explicit SoakedDevice(bool isSerial) : FaultyDevice(isSerial)
    {
        // Like a real device: an answer does not follow so closely on an older one that both are read at once.
        server->answerTimeMs = isSerial ? 5 : 0;
        line->randomFaultInterval = faultInterval;
        connect();
    }

    void connect()
    {
        probe = std::make_unique<ModbusProbe>(settings, pairsAt({10, 400}),
                                              SurveyedSpans{pairsAt({10, 20, 400, 800, 998, 1200}), {}});
        lastAnswer.start();
    }

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
    std::vector<std::unique_ptr<SoakedDevice>> devices;
    devices.reserve(static_cast<size_t>(deviceCount));
    for (int index = 0; index < deviceCount; ++index) {
        devices.push_back(std::make_unique<SoakedDevice>(index % 3 == 2));
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
            const QString mistake = device->lastAnswer.hasExpired(longestSilenceMs)
                                        ? QString("no answer any more: ") + device->probe->channel.state().trouble
                                        : device->probe->mistake();
            if (!mistake.isEmpty()) {
                out << device->settings.lineName() << ": " << mistake << '\n';
                return 1;
            }
            // Now and then a module is taken out, at any time.
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
