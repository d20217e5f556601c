// Modules that answer late, not at all or nonsense: how long the window stands still, and what its neighbour gets.

#include "Chapters.h"
#include "Harness.h"
#include "Watch.h"

#include <QElapsedTimer>
#include <QTest>
#include <QThread>
#include <QTimer>

namespace
{

struct Slowness
{
    const char *name;
    StormChannel::Manner manner;
    int answerMs;
    bool isBlocking; ///< a channel that waits as long as it takes, as another host's may
};

constexpr Slowness slownesses[] = {
    {"answers at once", StormChannel::Manner::Answers, 0, false},
    {"5 ms per answer", StormChannel::Manner::Answers, 5, false},
    {"50 ms per answer", StormChannel::Manner::Answers, 50, false},
    {"300 ms per answer", StormChannel::Manner::Answers, 300, false},
    {"2000 ms per answer", StormChannel::Manner::Answers, 2000, false},
    {"silent", StormChannel::Manner::Silent, 1, false},
    {"babbling: wrong address, command, type and value", StormChannel::Manner::Babbling, 0, false},
    {"300 ms per exchange, in a channel without a deadline", StormChannel::Manner::Answers, 300, true},
};

struct Measured
{
    qint64 longestStopMs = 0;
    double healthyPerSecond = 0.0;
    qint64 closeMs = 0;
};

/// \a curves of the window with the module, and a window with a module that answers at once beside it.
Measured slowed(const Slowness &each, int curves, int milliseconds)
{
    PluginHarness sick(pluginRoot(), "Sick");
    PluginHarness healthy(pluginRoot(), "Healthy");
    StormChannel *const healthyChannel = plugIn(&healthy.handler, "W/0", 1)->channel;
    StormChannel *const channel = plugIn(&sick.handler, "W/1", 2)->channel;
    for (PluginHarness *const harness : {&sick, &healthy}) {
        harness->open();
        chooseAll(harness, harness == &sick ? curves : 1);
    }
    channel->manner = each.manner;
    channel->answerMs = each.isBlocking ? 0 : each.answerMs;
    if (each.isBlocking) {
        channel->everyExchange = [&each] { QThread::msleep(static_cast<unsigned long>(each.answerMs)); };
    }
    for (PluginHarness *const harness : {&sick, &healthy}) {
        harness->plugin->removeEventFilter(harness); // its own timers fire from now on
    }
    Measured measured;
    QElapsedTimer clock;
    clock.start();
    qint64 last = 0;
    QTimer pulse;
    QObject::connect(&pulse, &QTimer::timeout, &pulse, [&] {
        measured.longestStopMs = qMax(measured.longestStopMs, clock.elapsed() - last);
        last = clock.elapsed();
    });
    pulse.start(1);
    const qint64 before = healthyChannel->exchanges;
    QTest::qWait(milliseconds);
    measured.longestStopMs = qMax(measured.longestStopMs, clock.elapsed() - last);
    measured.healthyPerSecond =
        static_cast<double>(healthyChannel->exchanges - before) * 1000.0 / static_cast<double>(clock.elapsed());
    clock.start();
    sick.close();
    Watch::settle(0);
    measured.closeMs = clock.elapsed();
    channel->everyExchange = nullptr;
    return measured;
}

} // namespace

void Chapters::slow(const Sizes &sizes)
{
    StormChannel::advance(-1);
    const int milliseconds = sizes.of(1200, 6000);
    double usual = 0.0;
    for (const Slowness &each : slownesses) {
        for (const int curves : {1, 4}) {
            if (!sizes.isLong && curves == 1 && each.answerMs != 0) {
                continue;
            }
            const Measured measured = slowed(each, curves, milliseconds);
            usual = qMax(usual, measured.healthyPerSecond);
            // Four curves of one module: each exchange has its deadline. The neighbour gets what the rests leave.
            constexpr qint64 stopMs = curveCount * CommandHandlerInterface::exchangeDeadlineMs + 500;
            constexpr double share = 0.3;
            const bool isFault = !each.isBlocking && (measured.longestStopMs > stopMs || measured.closeMs > stopMs ||
                                                      measured.healthyPerSecond < share * usual);
            Report::add({"slow", each.name, milliseconds,
                         filled("ms, with %1 curve(s) of this module and another window with a healthy one", curves),
                         filled("longest stop of the event loop %1 ms; the healthy window got %2 samples/s; closing "
                                "took %3 ms%4",
                                measured.longestStopMs, qRound64(measured.healthyPerSecond), measured.closeMs,
                                each.isBlocking ? " (nothing in a plugin limits this)" : ""),
                         isFault});
        }
    }
}
