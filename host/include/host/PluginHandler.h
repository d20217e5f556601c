#pragma once

#include "host/HostExport.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QStringList>

class ContainerInterface;
class KAROModuleInterface;

/**
 * The registry of module plugins, and of the containers that are told when modules come and go.
 *
 * Owned by the host application, which destroys the containers first and this last. A module that is destroyed behind
 * the registry's back leaves it by itself; the containers are then told of a null module. Containers may come and go,
 * and add or remove modules, while they are being told. GUI thread.
 */
class HOST_EXPORT PluginHandler : public QObject
{
    Q_OBJECT

public:
    explicit PluginHandler(QObject *parent = nullptr);
    ~PluginHandler() override;

    /// The keys of all connected modules: in order of arrival, or in text order when \a sorted.
    QStringList getModulePluginKeys(bool sorted) const;

    /// The module under \a key, or null when there is none (any more).
    KAROModuleInterface *getModulePlugin(const QString &key) const;

    /**
     * Registers \a module under its key, takes ownership and tells every container.
     * \return false when the key is empty or taken; the module is then left alone
     */
    bool addModulePlugin(KAROModuleInterface *module);

    /**
     * Takes the module out of the registry, tells every container, and only then destroys the module.
     * \return false when there is no such key
     */
    bool removeModulePlugin(const QString &key);

    /// Has \a container told of every change from now on; null or a known one is ignored. Containers call this themselves.
    void addContainer(ContainerInterface *container);
    void removeContainer(ContainerInterface *container);

private slots:
    void forgetModule(QObject *module);

private:
    void notifyContainers(KAROModuleInterface *module, const QString &message);

    QList<KAROModuleInterface *> m_modules; // owned, in order of arrival
    QList<QPointer<ContainerInterface>> m_containers;
};
