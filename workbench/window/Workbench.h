#pragma once

#include "logging/MessageLog.h"
#include "modules/ModuleRack.h"
#include "window/PluginFile.h"

#include "host/PluginHandler.h"

#include <QList>
#include <QString>

#include <memory>
#include <vector>

class ContainerInterface;

/**
 * The stand-in host without its windows: registry, modules, the plugins and their clones.
 *
 * Owns them all and ends them in the order that they rely on: clones, plugins, modules, registry. Container windows
 * have to be gone before, the application object has to live longer. GUI thread.
 */
class Workbench
{
public:
    Workbench(SimulationClock::Drive drive, int stepsPerExchange);
    ~Workbench();

    /// Loads one more plugin; see PluginFile::load(). One that is refused is not counted.
    QString loadPlugin(const QString &path);

    int pluginCount() const;
    /// What the plugin calls its windows; \a plugin from 0 to below pluginCount(), in the order of loading.
    QString pluginTitle(int plugin) const;
    QString pluginPath(int plugin) const; ///< Absolute.
    /// The plugin's root object, whose class is that of its containers. Owned by the workbench.
    ContainerInterface *pluginRoot(int plugin) const;

    ModuleRack &modules();
    const ModuleRack &modules() const;

    /// What goes to the logger from the making of the workbench on.
    MessageLog &messages();

    /**
     * Makes one more clone of a plugin, under a name of its own.
     * \return null when there is no such plugin or it makes no container; else owned by the workbench
     */
    ContainerInterface *addContainer(int plugin = 0);
    QList<ContainerInterface *> containers() const;
    /// Destroys a clone, whose window has to be closed.
    void removeContainer(ContainerInterface *container);
    /// Counts containers of the same class, from 1 in the order of their making; 0 for an unknown one.
    int numberOf(const ContainerInterface *container) const;

private:
    Q_DISABLE_COPY(Workbench)

    // In the order of their making, which is the reverse of that of their end.
    MessageLog m_messages;
    PluginHandler m_handler;
    ModuleRack m_modules;
    std::vector<std::unique_ptr<PluginFile>> m_plugins;
    std::vector<std::unique_ptr<ContainerInterface>> m_containers;
};
