#pragma once

#include "MessageLog.h"
#include "ModuleRack.h"
#include "PluginFile.h"

#include "host/PluginHandler.h"

#include <QList>
#include <QString>

#include <memory>
#include <vector>

class ContainerInterface;

/**
 * The stand-in host without its windows: registry, simulated modules, the plugin and its clones.
 *
 * Owns them all and ends them in the order that they rely on: clones, plugin, modules, registry. Container windows
 * have to be gone before, the application object has to live longer. GUI thread.
 */
class Workbench
{
public:
    Workbench(SimulationClock::Drive drive, int stepsPerExchange);
    ~Workbench();

    /// See PluginFile::load().
    QString loadPlugin(const QString &path);

    ModuleRack &modules();

    /// What goes to the logger from the making of the workbench on.
    MessageLog &messages();

    /**
     * Makes one more clone of the plugin, under a name of its own.
     * \return null when no plugin is loaded or it makes no container; else owned by the workbench
     */
    ContainerInterface *addContainer();
    QList<ContainerInterface *> containers() const;

private:
    Q_DISABLE_COPY(Workbench)

    // In the order of their making, which is the reverse of that of their end.
    MessageLog m_messages;
    PluginHandler m_handler;
    ModuleRack m_modules;
    PluginFile m_plugin;
    std::vector<std::unique_ptr<ContainerInterface>> m_containers;
};
