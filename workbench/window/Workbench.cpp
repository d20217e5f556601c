#include "window/Workbench.h"

#include "host/ContainerInterface.h"

#include <QApplication>
#include <QEvent>
#include <QStyle>
#include <QStyleOptionViewItem>

#include <algorithm>

namespace
{

/// By name: the same plugin in two files has two classes that share their settings.
auto isOfClassOf(const ContainerInterface *container)
{
    const QByteArray className = container->metaObject()->className();
    return [className](const std::unique_ptr<ContainerInterface> &other) {
        return className == other->metaObject()->className();
    };
}

} // namespace

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
    // The style keeps the item of a view that it laid out last, with an icon whose file name may be the plugin's text.
    const QStyleOptionViewItem emptyItem;
    QApplication::style()->subElementRect(QStyle::SE_ItemViewItemText, &emptyItem);
}

QString Workbench::loadPlugin(const QString &path)
{
    auto plugin = std::make_unique<PluginFile>();
    QString problem = plugin->load(path);
    if (problem.isEmpty()) {
        m_plugins.push_back(std::move(plugin));
    }
    return problem;
}

int Workbench::pluginCount() const
{
    return int(m_plugins.size());
}

QString Workbench::pluginTitle(int plugin) const
{
    return m_plugins[size_t(plugin)]->root()->title();
}

QString Workbench::pluginPath(int plugin) const
{
    return m_plugins[size_t(plugin)]->path();
}

ContainerInterface *Workbench::pluginRoot(int plugin) const
{
    return m_plugins[size_t(plugin)]->root();
}

ModuleRack &Workbench::modules()
{
    return m_modules;
}

const ModuleRack &Workbench::modules() const
{
    return m_modules;
}

MessageLog &Workbench::messages()
{
    return m_messages;
}

ContainerInterface *Workbench::addContainer(int plugin)
{
    if (plugin < 0 || plugin >= pluginCount()) {
        return nullptr;
    }
    ContainerInterface *const root = m_plugins[size_t(plugin)]->root();
    // The settings of a clone are kept under its name: the same clones have to get the same names at every start,
    // whatever other plugins are there.
    const QString className = QString::fromLatin1(root->metaObject()->className());
    QString name;
    int number = 0;
    do { // the first that is free: others may have been removed
        name = QStringLiteral("%1 %2").arg(className).arg(++number);
    } while (std::any_of(m_containers.cbegin(), m_containers.cend(),
                         [&name](const auto &other) { return other->name() == name; }));
    PluginInterface *const clone = root->clone(name, &m_handler);
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

void Workbench::removeContainer(ContainerInterface *container)
{
    const auto place = std::find_if(m_containers.begin(), m_containers.end(),
                                    [container](const auto &other) { return other.get() == container; });
    if (place != m_containers.end()) {
        container->aboutToExit();
        m_containers.erase(place);
    }
}

int Workbench::numberOf(const ContainerInterface *container) const
{
    const auto place = std::find_if(m_containers.cbegin(), m_containers.cend(),
                                    [container](const auto &other) { return other.get() == container; });
    return place == m_containers.cend() ? 0
                                        : 1 + int(std::count_if(m_containers.cbegin(), place, isOfClassOf(container)));
}
