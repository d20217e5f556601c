#include "modules/ModuleFactory.h"

#include "modules/modbus/ModbusModule.h"
#include "modules/modbus/RegisterMapReader.h"
#include "modules/recording/RecordedModule.h"
#include "modules/simulation/ModuleKind.h"
#include "modules/simulation/SimulatedModule.h"

#include <QCoreApplication>

namespace
{

struct ModuleFactoryText
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
            return {nullptr,
                    ModuleFactoryText::tr("%1: there is no kind of module called \"%2\"").arg(key, settings.kind)};
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

    ModuleResult operator()(const RecordingSettings &settings) const
    {
        RecordedModule::Result opened = RecordedModule::open(settings, key, context.handler);
        return {std::move(opened.module), opened.error};
    }

    ModuleResult operator()(const DeviceSettings &settings) const
    {
        const QString problem = settings.connection.problem();
        if (!problem.isEmpty()) {
            return {nullptr, QStringLiteral("%1: %2").arg(key, problem)};
        }
        const RegisterMapResult map = readRegisterMapFile(settings.mapFile);
        if (!map.error.isEmpty()) {
            return {nullptr, map.error};
        }
        return {std::make_unique<ModbusModule>(key, context.handler, settings.connection, map.map), QString()};
    }
};

} // namespace

ModuleResult makeModule(const ModuleSettings &settings, const ModuleContext &context)
{
    return std::visit(FamilyFactory{settings.key, context}, settings.family);
}
