#pragma once

#include <QString>

#include <memory>

class ContainerInterface;
class ModuleRack;
class PluginHandler;
class QWidget;

/// A host with containers of the plugin: they are always there, open or closed.
class StormHost
{
public:
    static constexpr int containerCount = 2;

    /// \a kind is "workbench", or "bare" for plain dialogs around the plugin; loads the plugin at \a pluginPath.
    static std::unique_ptr<StormHost> make(const QString &kind, const QString &pluginPath);

    StormHost() = default;
    virtual ~StormHost() = default;

    virtual ContainerInterface *container(int index) = 0;
    /// The window around the container; null while it is closed.
    virtual QWidget *window(int index) = 0;
    /// What else can be operated: the window around all; null when there is none.
    virtual QWidget *frame() = 0;
    /// Opens the container; nothing when it is open.
    virtual void open(int index) = 0;
    virtual void close(int index) = 0;
    /// Destroys the container and makes another one.
    virtual void renew(int index) = 0;
    /// Whether renew() ends everything, and may not be called from inside the plugin.
    virtual bool isRenewedWhole() const = 0;
    virtual PluginHandler *registry() = 0;
    virtual ModuleRack *rack() = 0; ///< null when there is none

private:
    Q_DISABLE_COPY(StormHost)
};
