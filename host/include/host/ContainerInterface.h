#pragma once

#include "host/HostExport.h"
#include "host/PluginInterface.h"

#include <QtPlugin>

class KAROModuleInterface;

/**
 * Base of the plugins that the host shows in container windows of their own.
 *
 * The host makes the container window the plugin's parent and calls init() with it at every opening; the window's
 * signal finished(int) calls finished() when it closes. A container registers itself with its handler: until it is
 * destroyed, handleModulePlugin() is called for every module that comes or goes.
 */
class HOST_EXPORT ContainerInterface : public PluginInterface
{
    Q_OBJECT

public:
    ContainerInterface(const QString &name, const QString &title, int type, PluginHandler *handler, QString iconPath,
                       QWidget *parent);
    ~ContainerInterface() override;

    virtual void handleMessageFromToolsPlugin(int code, QString message);
    /// A module came or went; \a message is its name. Null when it was destroyed before it could be taken out.
    virtual void handleModulePlugin(KAROModuleInterface *module, QString message);
    virtual void finished(int code);

    /// The registry given at construction, or null. Not owned.
    PluginHandler *pluginHandler() const;
};

#define ContainerInterface_iid "org.container-host.ContainerInterface/2.0"
Q_DECLARE_INTERFACE(ContainerInterface, ContainerInterface_iid)
