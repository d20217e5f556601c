#pragma once

#include <QString>

#include <memory>

class ContainerInterface;
class ModuleRack;
class QWidget;

/// A host with containers of the plugin: they are always there, open or closed.
class StormHost
{
public:
    static constexpr int containerCount = 2;

    /// \a kind is "workbench", or "bare" for plain dialogs around the plugin.
    static std::unique_ptr<StormHost> make(const QString &kind);

    StormHost() = default;
    virtual ~StormHost() = default;

    virtual ContainerInterface *container(int index) = 0;
    /// The window around the container; null while it is closed.
    virtual QWidget *window(int index) = 0;
    /// Opens the container; nothing when it is open.
    virtual void open(int index) = 0;
    virtual void close(int index) = 0;
    /// Destroys the container and makes another one.
    virtual void renew(int index) = 0;

    bool isRenewedWhole = false; ///< renew() ends everything, and may not be called from inside the plugin
    QWidget *frame = nullptr;    ///< what else can be operated: the window around all; null when there is none
    ModuleRack *rack = nullptr;  ///< null when there is none

private:
    Q_DISABLE_COPY(StormHost)
};
