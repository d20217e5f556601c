#include "modules/simulation/SimulatedModule.h"

#include "modules/simulation/ModuleDescription.h"
#include "modules/simulation/TableModule.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace
{

struct ModuleKind
{
    const char *name;
    const char *summary;
    ModuleDescription (*description)();
};

constexpr std::array<ModuleKind, 3> moduleKinds = {{
    {"stepper-3",
     QT_TRANSLATE_NOOP("SimulatedModule", "Three stepper axes with registers: axis 0 runs to and fro with play in its "
                                          "gear, axes 1 and 2 draw a circle."),
     stepperDescription},
    {"servo-1",
     QT_TRANSLATE_NOOP("SimulatedModule",
                       "One servo axis without registers: runs to and fro and swings a little when it stops."),
     servoDescription},
    {"io-block",
     QT_TRANSLATE_NOOP(
         "SimulatedModule",
         "Registers only: analog and digital inputs fed by test signals (circle, spiral, noise, counters)."),
     inputOutputDescription},
}};

const ModuleKind *findKind(const QString &name)
{
    const auto *const found = std::find_if(moduleKinds.begin(), moduleKinds.end(), [&name](const ModuleKind &kind) {
        return name == QLatin1String(kind.name);
    });
    return found == moduleKinds.end() ? nullptr : found;
}

} // namespace

QStringList simulatedModuleKinds()
{
    QStringList names;
    for (const ModuleKind &kind : moduleKinds) {
        names.append(QLatin1String(kind.name));
    }
    return names;
}

int simulatedModuleAxisCount(const QString &kind)
{
    const ModuleKind *const found = findKind(kind);
    return found == nullptr ? 0 : int(found->description().axes.size());
}

QString simulatedModuleSummary(const QString &kind)
{
    const ModuleKind *const found = findKind(kind);
    return found == nullptr ? QString() : QCoreApplication::translate("SimulatedModule", found->summary);
}

SimulatedModule *createModule(const QString &kind, const QString &key, PluginHandler *handler, SimulationClock *clock,
                              quint32 seed)
{
    const ModuleKind *const found = findKind(kind);
    return found == nullptr ? nullptr : new TableModule(found->description(), key, handler, clock, seed);
}
