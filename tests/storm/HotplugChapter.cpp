// Modules that come and go while four curves sample and record, and everything that may end inside an exchange.

#include "Chapters.h"
#include "Harness.h"
#include "Watch.h"

#include <QTemporaryDir>

#include <random>

namespace
{

void hotplugs(const Sizes &sizes)
{
    const int count = sizes.of(300, 5000);
    const QTemporaryDir folder;
    std::mt19937 engine(sizes.seed);
    PluginHarness harness(pluginRoot());
    harness.open();
    QVector<StormModule *> modules;
    for (quint32 place = 0; place < 3U; ++place) {
        modules.append(plugIn(&harness.handler, QStringLiteral("H/%1").arg(place), place));
    }
    qint64 asked = 0;
    qint64 unasked = 0;
    qint64 lines = 0;
    bool isWhole = true;
    for (int round = 0; round < count; ++round) {
        const auto place = static_cast<int>(engine() % 3U);
        const QString key = modules.at(place)->key();
        if (engine() % 4U == 0U) {
            delete modules.at(place);
        } else {
            harness.handler.removeModulePlugin(key);
        }
        modules[place] = plugIn(&harness.handler, key, static_cast<quint32>(engine() % 64U));
        const qint64 before = StormChannel::allExchanges();
        harness.sampleTick();
        unasked += StormChannel::allExchanges() - before;
        chooseAll(&harness);
        harness.sampleTick();
        const QString path = folder.filePath(QString::number(round % 8));
        if (harness.logBox()->isChecked()) {
            harness.logBox()->click();
        }
        harness.startLog(path);
        const qint64 announced = Watch::announcedLines();
        for (int tick = 0; tick < 10; ++tick) {
            StormChannel::advance(tickMs);
            harness.sampleTick();
        }
        harness.refreshTick();
        asked += StormChannel::allExchanges() - before;
        const Recorded recorded(contentOf(path));
        isWhole =
            isWhole && recorded.isWhole && recorded.hasHeader && recorded.lines == Watch::announcedLines() - announced;
        lines += recorded.lines;
    }
    const qint64 dead = StormChannel::exchangesWithTheDead();
    Report::add({"hotplug", "modules taken out (a quarter without notice) and replaced by others of the same key",
                 count, "four curves that sample and record, three modules",
                 filled("%1 exchanges, %2 with a module that is gone, %3 before a new choice; %4 lines, %5", asked,
                        dead, unasked, lines, isWhole ? "all whole" : "not all whole"),
                 unasked != 0 || dead != 0 || lines < count || !isWhole});
}

struct Moment
{
    const char *name;
    void (*act)(PluginHarness *harness);
};

constexpr Moment insideMoments[] = {
    {"the module removed", [](PluginHarness *it) { it->handler.removeModulePlugin("H/0"); }},
    {"the other module removed", [](PluginHarness *it) { it->handler.removeModulePlugin("H/1"); }},
    {"the module destroyed without notice", [](PluginHarness *it) { delete it->handler.getModulePlugin("H/0"); }},
    {"the module replaced by another of the same key, and chosen",
     [](PluginHarness *it) {
         it->handler.removeModulePlugin("H/0");
         plugIn(&it->handler, "H/0", 3);
         chooseAll(it);
     }},
    {"the window closed", [](PluginHarness *it) { it->window->reject(); }},
    {"the window destroyed with the plugin in it", [](PluginHarness *it) { delete it->window; }},
    {"the plugin destroyed", [](PluginHarness *it) { delete it->plugin; }},
    {"the plugin destroyed, then both modules",
     [](PluginHarness *it) {
         delete it->plugin;
         it->handler.removeModulePlugin("H/0");
         it->handler.removeModulePlugin("H/1");
     }},
    {"the window closed and opened, the sampling timer fired again",
     [](PluginHarness *it) {
         it->window->reject();
         it->open();
         chooseAll(it);
         it->sampleTick();
     }},
    {"the log box and all buttons clicked",
     [](PluginHarness *it) {
         for (const char *const name : {"btnResetData", "btnExport", "btnRefresh"}) {
             it->find<QAbstractButton>(name)->click();
         }
     }},
};

void insideExchanges(const Sizes &sizes)
{
    const int count = sizes.of(100, 1000);
    std::mt19937 engine(sizes.seed);
    QString fault;
    for (int round = 0; round < count && fault.isEmpty(); ++round) {
        const Moment &each = insideMoments[static_cast<std::size_t>(round) % std::size(insideMoments)];
        PluginHarness harness(pluginRoot());
        harness.open();
        StormModule *const first = plugIn(&harness.handler, "H/0", 1);
        StormModule *const second = plugIn(&harness.handler, "H/1", 2);
        const QVector<StormChannel *> channels{first->channel, second->channel};
        chooseAll(&harness);
        harness.sampleTick();
        channels.at(static_cast<int>(engine() % 2U))->onExchange = [&harness, &each] { each.act(&harness); };
        harness.sampleTick();
        if (!harness.plugin.isNull()) {
            harness.sampleTick();
            harness.refreshTick();
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const QStringList warnings = Watch::takeFaults();
        if (StormChannel::exchangesWithTheDead() != 0 || !warnings.isEmpty()) {
            fault = filled("%1: %2 exchanges with a module that is gone; %3", each.name,
                           StormChannel::exchangesWithTheDead(), warnings.join(QLatin1Char(' ')));
        }
    }
    QStringList names;
    for (const Moment &each : insideMoments) {
        names.append(each.name);
    }
    Report::add({"hotplug", "from inside an exchange: " + names.join("; "), count, "four curves, two modules",
                 fault.isEmpty() ? "no crash, no exchange with a module that is gone" : fault, !fault.isEmpty()});
}

} // namespace

void Chapters::hotplug(const Sizes &sizes)
{
    StormChannel::advance(0);
    hotplugs(sizes);
    insideExchanges(sizes);
}
