// What is left behind by openings, choices, exports and loads: memory, objects, descriptors, timers per cycle.

#include "Chapters.h"
#include "Harness.h"
#include "Watch.h"

#include <QPixmapCache>
#include <QPluginLoader>
#include <QTemporaryDir>

#include <functional>
#include <memory>

namespace
{

struct Levels
{
    QMap<QByteArray, int> objects = Watch::objects();
    qint64 heapBytes = Watch::heapBytes();
    int descriptors = Watch::descriptors();
    int timers = Watch::timers();
};

/// What may stay of each cycle.
struct Allowed
{
    int objects = 0;
    double heapBytes = 0.0;
};

int objectsIn(const QMap<QByteArray, int> &counts)
{
    int sum = 0;
    for (const int count : counts) {
        sum += count;
    }
    return sum;
}

void measure(const QString &tried, const QString &on, int count, const Allowed &allowed,
             const std::function<void(int cycle)> &cycle)
{
    const int warmUp = qMax(20, count / 10);
    for (int index = 0; index < warmUp; ++index) {
        cycle(index);
    }
    Watch::settle();
    const Levels before;
    for (int index = 0; index < count; ++index) {
        cycle(index);
    }
    Watch::settle();
    const Levels after;
    const int objects = objectsIn(after.objects) - objectsIn(before.objects);
    const double bytes = static_cast<double>(after.heapBytes - before.heapBytes) / count;
    const int descriptors = after.descriptors - before.descriptors;
    const int timers = after.timers - before.timers;
    // Qt's lists of gestures, posted events and fonts grow in steps; measured: up to 37 kB.
    constexpr double slackBytes = 64000.0; // once, however many cycles there are
    const bool isFault = objects > allowed.objects * count || bytes > allowed.heapBytes + slackBytes / count ||
                         descriptors > 0 || timers > 0;
    const QString growth =
        objects > allowed.objects * count ? QLatin1Char(' ') + Watch::growth(before.objects, after.objects) : QString();
    Report::add({"life", tried, count, on,
                 filled("objects left %1 (allowed %2)%3; bytes per cycle %4 (allowed %5 and %6 kB in all for lists of "
                        "Qt); descriptors left %7, timers left %8 (allowed 0)",
                        objects, allowed.objects * count, growth, qRound64(bytes), allowed.heapBytes,
                        slackBytes / 1000.0, descriptors, timers),
                 isFault});
}

void settleQuickly()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void loads(int count)
{
    const auto cycle = [](int) {
        QPluginLoader loader(PLUGIN);
        loader.setLoadHints({}); // else Qt keeps the file mapped
        auto *const root = qobject_cast<ContainerInterface *>(loader.instance());
        {
            PluginHarness harness(root);
            harness.open();
            plugIn(&harness.handler, "L/0", 2);
            chooseAll(&harness);
            harness.sampleTick();
            harness.refreshTick();
            harness.close();
        }
        settleQuickly();
        if (!loader.unload()) {
            qWarning("the plugin's file was not unloaded");
        }
    };
    // Once unmapped, what the plugin keeps for good is only lost: as below, and eight names (640), the first points of
    // four curves (256), a list of its own (128 more); and the channel of the storm's module (256): 2,900 to 3,000.
    measure("loading the plugin, opening, sampling, closing, unloading", "the plugin's file", count, {0, 3200.0},
            cycle);
}

} // namespace

void Chapters::life(const Sizes &sizes)
{
    StormChannel::advance(0);
    // Qt keeps the names of cached pictures longer than these, and for good when the cache is cleared.
    QPixmapCache::setCacheLimit(0);
    loads(sizes.of(20, 500)); // before pluginRoot() loads it for good

    const QTemporaryDir folder;
    auto harness = std::make_unique<PluginHarness>(pluginRoot());
    harness->open();
    plugIn(&harness->handler, "L/0", 2);
    plugIn(&harness->handler, "L/1", 67);
    chooseAll(harness.get());
    const int ticks = sizes.isLong ? 12000 : 500; // many openings add many points, so the curves have to be full before
    for (int tick = 0; tick < ticks; ++tick) {
        StormChannel::advance(tickMs);
        harness->sampleTick();
    }
    harness->refreshTick();
    const QString four = "four curves, two modules";
    measure("opening and closing", four, sizes.of(150, 10000), {0, 0.0}, [&](int) {
        harness->close();
        harness->open();
        harness->sampleTick();
        harness->refreshTick();
        settleQuickly();
    });
    measure("choosing modules, motors and registers", four, sizes.of(100, 2000), {0, 0.0}, [&](int index) {
        ComboBox *const modules = harness->moduleBox(index % curveCount, index % 2 == 0 ? 'X' : 'Y');
        modules->setCurrentIndex(-1);
        modules->setCurrentIndex(index / 8 % modules->count());
        ComboBox *const motors = harness->motorBox(index % curveCount, index % 2 == 0 ? 'X' : 'Y');
        motors->setCurrentIndex(motors->count() - 1 - index / 16 % qMax(1, motors->count()));
        harness->sampleTick();
        // A table of Qt lists the rows that are resized until the event loop has run, and keeps the capacity of its
        // longest list for good. A person does not choose without a loop in between.
        QCoreApplication::processEvents();
        settleQuickly();
    });
    measure("exporting, and closing the export window", four, sizes.of(20, 500), {0, 0.0}, [&](int) {
        harness->exported();
        delete harness->window->findChild<QWidget *>("ExportXY");
        settleQuickly();
    });
    // A QFile with its engine and the name of a temporary file is kept: 870 bytes.
    measure("recording into a new file", four, sizes.of(30, 1000), {1, 1000.0}, [&](int index) {
        harness->startLog(folder.filePath(QString::number(index % 16)));
        StormChannel::advance(tickMs);
        harness->sampleTick();
        harness->logBox()->click();
        settleQuickly();
    });
    harness.reset();
    // Of four curves the records (80 bytes on the heap each), sources (twice 96), lists of points and points (32 each)
    // are kept, and their 20 places in a list that has room for up to twice as many: 1,344 bytes and 160 to 320.
    measure("a new clone: made, opened, closed, destroyed", "the plugin's root", sizes.of(30, 1000), {0, 1700.0},
            [&](int) {
                PluginHarness once(pluginRoot());
                once.open();
                once.sampleTick();
                once.close();
                settleQuickly();
            });
}
