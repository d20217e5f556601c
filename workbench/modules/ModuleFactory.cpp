#include "modules/ModuleFactory.h"

#include "modules/simulation/ModuleKind.h"
#include "modules/simulation/SimulatedModule.h"

#include <QCoreApplication>

namespace
{

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ModuleFactory)
};

/// Makes the module of the family whose settings it is called with.
struct FamilyFactory
{
    const QString &key;
    const ModuleContext &context;

    ModuleResult operator()(const SimulationSettings &settings) const
    {
        const ModuleKind *const kind = findModuleKind(settings.kind);
        if (kind == nullptr) {
            return {nullptr, Text::tr("%1: there is no kind of module called \"%2\"").arg(key, settings.kind)};
        }
        auto module = std::make_unique<SimulatedModule>(*kind, key, context.handler, context.clock, context.seed);
        for (auto motion = settings.motions.cbegin(); motion != settings.motions.cend(); ++motion) {
            module->setMotion(motion.key(), motion.value());
        }
        module->setMoving(settings.isMoving);
        module->setSilent(settings.isSilent);
        module->setAnswerTime(settings.answerTimeMs);
        return {std::move(module), QString()};
    }
};

} // namespace

ModuleResult makeModule(const ModuleSettings &settings, const ModuleContext &context)
{
    return std::visit(FamilyFactory{settings.key, context}, settings.family);
}
