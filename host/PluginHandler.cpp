#include "host/PluginHandler.h"

#include "host/ContainerInterface.h"
#include "host/KAROModuleInterface.h"

#include <algorithm>

PluginHandler::PluginHandler(QObject *parent) : QObject(parent) {}

PluginHandler::~PluginHandler()
{
    while (!m_modules.isEmpty()) {
        removeModulePlugin(m_modules.last()->key());
    }
}

QStringList PluginHandler::getModulePluginKeys(bool sorted) const
{
    QStringList keys;
    keys.reserve(m_modules.size());
    for (const KAROModuleInterface *module : m_modules) {
        keys.append(module->key());
    }
    if (sorted) {
        keys.sort();
    }
    return keys;
}

KAROModuleInterface *PluginHandler::getModulePlugin(const QString &key) const
{
    const auto found = std::find_if(m_modules.cbegin(), m_modules.cend(),
                                    [&key](const KAROModuleInterface *module) { return module->key() == key; });
    return found == m_modules.cend() ? nullptr : *found;
}

bool PluginHandler::addModulePlugin(KAROModuleInterface *module)
{
    if (module == nullptr || module->key().isEmpty() || getModulePlugin(module->key()) != nullptr) {
        return false;
    }
    m_modules.append(module);
    // A signature without blanks needs no normalisation by Qt.
    // clang-format off
    connect(module, SIGNAL(destroyed(QObject*)), SLOT(forgetModule(QObject*)));
    // clang-format on
    notifyContainers(module, module->name());
    return true;
}

bool PluginHandler::removeModulePlugin(const QString &key)
{
    const QPointer<KAROModuleInterface> module = getModulePlugin(key);
    if (module.isNull()) {
        return false;
    }
    m_modules.removeOne(module);
    notifyContainers(module, module->name());
    delete module.data();
    return true;
}

void PluginHandler::addContainer(ContainerInterface *container)
{
    if (container != nullptr && !m_containers.contains(container)) {
        m_containers.append(container);
    }
}

void PluginHandler::removeContainer(ContainerInterface *container)
{
    m_containers.removeAll(container);
}

void PluginHandler::forgetModule(QObject *module)
{
    const auto found = std::find(m_modules.begin(), m_modules.end(), module);
    if (found == m_modules.end()) {
        return;
    }
    m_modules.erase(found);
    notifyContainers(nullptr, QString());
}

void PluginHandler::notifyContainers(KAROModuleInterface *module, const QString &message)
{
    // A container may destroy containers or add and remove modules in its handler: nothing destroyed is passed on.
    const QPointer<KAROModuleInterface> guard = module;
    const QList<QPointer<ContainerInterface>> containers = m_containers;
    for (const QPointer<ContainerInterface> &container : containers) {
        if (module != nullptr && guard.isNull()) {
            return;
        }
        if (!container.isNull() && m_containers.contains(container)) {
            container->handleModulePlugin(module, message);
        }
    }
}
