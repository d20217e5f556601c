#pragma once

#include "modules/ModuleSettings.h"

#include <QtGlobal>

#include <memory>

class KAROModuleInterface;
class PluginHandler;
class SimulationClock;

/// A module that is in no registry yet, or one line that says why there is none; \c error is empty when there is one.
struct ModuleResult
{
    std::unique_ptr<KAROModuleInterface> module;
    QString error;
};

/// What a module may need besides its settings. The pointers are not owned and have to outlive the module.
struct ModuleContext
{
    PluginHandler *handler = nullptr;
    SimulationClock *clock = nullptr;
    quint32 seed = 1; ///< fixes the noise of a simulated module
};

/// Makes the module that \a settings describes.
ModuleResult makeModule(const ModuleSettings &settings, const ModuleContext &context);
