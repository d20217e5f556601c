#include "Workbench.h"

#include "host/ContainerInterface.h"

#include <QCoreApplication>
#include <QEvent>

Workbench::Workbench(SimulationClock::Drive drive, int stepsPerExchange)
    : m_modules(&m_handler, drive, stepsPerExchange)
{
}

Workbench::~Workbench()
{
    for (const auto &container : m_containers) {
        container->aboutToExit();
    }
    m_containers.clear();
    // What the plugin meant to delete later still runs its code, which is about to be unmapped.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QString Workbench::loadPlugin(const QString &path)
{
    return m_plugin.load(path);
}

ModuleRack &Workbench::modules()
{
    return m_modules;
}

MessageLog &Workbench::messages()
{
    return m_messages;
}

ContainerInterface *Workbench::addContainer()
{
    if (m_plugin.root() == nullptr) {
        return nullptr;
    }
    // The settings of a clone are kept under its name: the same clones have to get the same names at every start.
    const QString className = QString::fromLatin1(m_plugin.root()->metaObject()->className());
    const QString name = QStringLiteral("%1 %2").arg(className).arg(m_containers.size() + 1);
    PluginInterface *const clone = m_plugin.root()->clone(name, &m_handler);
    auto *const container = qobject_cast<ContainerInterface *>(clone);
    if (container == nullptr) {
        delete clone;
        return nullptr;
    }
    m_containers.emplace_back(container);
    return container;
}

QList<ContainerInterface *> Workbench::containers() const
{
    QList<ContainerInterface *> list;
    for (const auto &container : m_containers) {
        list.append(container.get());
    }
    return list;
}
