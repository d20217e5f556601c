#pragma once

#include "host/HostExport.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QStringList>

class ContainerInterface;
class KAROModuleInterface;

/**
 * The registry of module plugins, and of the containers that are notified when modules come and go.
 *
 * Owned by the host application, which destroys the containers first and this last. A module that is destroyed without
 * removeModulePlugin() is removed, too; the containers are then notified with a null module. During a notification
 * containers may be created and destroyed, and may add or remove modules. GUI thread.
 *
 * Plugins look modules up; adding and removing modules serves the host application.
 */
class HOST_EXPORT PluginHandler : public QObject
{
    Q_OBJECT

public:
    explicit PluginHandler(QObject *parent = nullptr);
    ~PluginHandler() override;

    /// The keys of all connected modules: in order of arrival, or in text order when \a sorted.
    QStringList getModulePluginKeys(bool sorted) const;

    /// The module registered under \a key, or null.
    KAROModuleInterface *getModulePlugin(const QString &key) const;

    /**
     * Registers \a module under its key, takes ownership and notifies every container.
     * \return false when \a module is null, or its key is empty or in use; ownership then stays with the caller
     */
    bool addModulePlugin(KAROModuleInterface *module);

    /**
     * Removes the module from the registry, notifies every container, and only then destroys the module.
     * \return false when there is no such key
     */
    bool removeModulePlugin(const QString &key);

    /// Notifies \a container of every change from now on. Null or a known container is ignored; containers call this
    /// themselves.
    void addContainer(ContainerInterface *container);
    void removeContainer(ContainerInterface *container);

private slots:
    void forgetModule(QObject *module);

private:
    void notifyContainers(KAROModuleInterface *module, const QString &message);

    QList<KAROModuleInterface *> m_modules; // owned, in order of arrival
    QList<QPointer<ContainerInterface>> m_containers;
};
