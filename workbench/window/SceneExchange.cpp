#include "window/SceneExchange.h"

#include "reading/TextLists.h"
#include "setup/ChoiceReader.h"
#include "setup/SceneRunner.h"
#include "window/ContainerWindow.h"
#include "window/MainWindow.h"
#include "window/WindowState.h"
#include "window/Workbench.h"

#include "host/AppSettings.h"
#include "host/ContainerInterface.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QScreen>
#include <QTemporaryDir>

#include <memory>

namespace
{

struct SceneExchangeText
{
    Q_DECLARE_TR_FUNCTIONS(SceneExchange)
};

QString classOf(const ContainerInterface *container)
{
    return QString::fromLatin1(container->metaObject()->className());
}

/// Adds the scene's modules to an empty rack; returns what went wrong.
QStringList addModules(ModuleRack &rack, const Scene &scene)
{
    QStringList errors;
    quint32 seed = scene.seed;
    for (const ModuleSettings &module : scene.modules) {
        const QString problem = rack.add(module, seed++, !scene.takenOut.contains(module.key));
        if (!problem.isEmpty()) {
            errors.append(problem);
        }
    }
    return errors;
}

/// Keeps the settings of all that is made meanwhile away from those of the person.
class SettingsAside
{
public:
    SettingsAside() : m_store(AppSettings::storeFile())
    {
        AppSettings::setStoreFile(m_folder.filePath(QStringLiteral("settings.ini")));
    }
    ~SettingsAside()
    {
        AppSettings::setStoreFile(m_store);
    }

private:
    Q_DISABLE_COPY(SettingsAside)

    const QTemporaryDir m_folder;
    const QString m_store;
};

/// Makes the choices in a container that nobody sees; returns what went wrong.
QStringList tryContainer(ContainerInterface *root, PluginHandler *handler, const SceneContainer &choices)
{
    const std::unique_ptr<PluginInterface> clone(root->clone(QStringLiteral("aside"), handler));
    auto *const container = qobject_cast<ContainerInterface *>(clone.get());
    if (container == nullptr) {
        return {SceneExchangeText::tr("the plugin %1 makes no container").arg(classOf(root))};
    }
    auto *const window = new ContainerWindow(container);
    window->setAttribute(Qt::WA_DontShowOnScreen);
    window->setAttribute(Qt::WA_ShowWithoutActivating);
    window->show();
    SceneRunner runner(container);
    runner.apply(choices);
    window->close(); // the container leaves it
    container->aboutToExit();
    return runner.errors();
}

} // namespace

SceneExchange::SceneExchange(Workbench *workbench, MainWindow *window) : m_workbench(workbench), m_window(window) {}

Scene SceneExchange::taken(QStringList *losses) const
{
    Scene scene;
    const ModuleRack &rack = m_workbench->modules();
    for (int index = 0; index < rack.count(); ++index) {
        scene.modules.append(rack.settings(index));
        if (!rack.isPluggedIn(index)) {
            scene.takenOut.append(rack.settings(index).key);
        }
    }
    const QList<ContainerInterface *> containers = m_workbench->containers();
    for (int i = 0; i < containers.size(); ++i) {
        ContainerInterface *const container = containers.at(i);
        ChosenScene chosen = readChoices(container);
        chosen.choices.plugin = classOf(container);
        chosen.choices.place = m_window->placeOf(container);
        if (i == 0) {
            static_cast<SceneContainer &>(scene) = chosen.choices;
        } else {
            scene.furtherContainers.append(chosen.choices);
        }
        if (container == m_window->frontContainer()) {
            scene.frontContainer = i;
        }
        if (losses != nullptr) {
            *losses += chosen.losses;
        }
    }
    scene.layout.isMaximised = m_window->isMaximized();
    scene.layout.size = m_window->isMaximized() ? m_window->normalGeometry().size() : m_window->size();
    scene.layout.docks = WindowState::docks(*m_window);
    return scene;
}

QStringList SceneExchange::replaceBy(const Scene &scene)
{
    QStringList errors = tryAside(scene);
    if (!errors.isEmpty()) {
        return errors;
    }
    const Scene before = taken();
    errors = setUp(scene);
    if (!errors.isEmpty()) {
        errors.append(SceneExchangeText::tr("All was set up again as it was, without the points."));
        errors += setUp(before);
    }
    return errors;
}

QStringList SceneExchange::setUp(const Scene &scene)
{
    const QList<ContainerInterface *> containers = m_workbench->containers();
    for (ContainerInterface *const container : containers) {
        m_window->removeContainer(container);
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // their windows
    ModuleRack &rack = m_workbench->modules();
    while (rack.count() > 0) {
        rack.remove(rack.count() - 1);
    }
    QStringList errors = addModules(rack, scene);
    setUpLayout(scene);
    return errors + setUpContainers(scene);
}

QStringList SceneExchange::tryAside(const Scene &scene) const
{
    const SettingsAside settings;
    QStringList errors;
    PluginHandler handler;
    ModuleRack rack(&handler, SimulationClock::Drive::Exchanges, 1);
    errors += addModules(rack, scene);
    const QList<SceneContainer> containers = scene.containers();
    for (const SceneContainer &container : containers) {
        const int plugin = pluginOf(container, errors);
        if (plugin >= 0) {
            errors += tryContainer(m_workbench->pluginRoot(plugin), &handler, container);
        }
    }
    QMainWindow window;
    if (!scene.layout.docks.isEmpty() && !WindowState::restoreDocks(&window, scene.layout.docks)) {
        errors.append(
            SceneExchangeText::tr("the field \"docks\" of the window is not as the workbench has written it"));
    }
    return errors;
}

QStringList SceneExchange::setUpContainers(const Scene &scene)
{
    QStringList errors;
    QList<ContainerInterface *> made;
    const QList<SceneContainer> containers = scene.containers();
    for (const SceneContainer &choices : containers) {
        const int plugin = pluginOf(choices, errors);
        ContainerInterface *const container = plugin < 0 ? nullptr : m_window->addContainer(plugin);
        made.append(container);
        if (container == nullptr) {
            continue;
        }
        if (choices.place.state != WindowPlace::State::Closed || !choices.curves.isEmpty()) {
            m_window->openContainer(container);
            SceneRunner runner(container);
            runner.apply(choices);
            errors += runner.errors();
        }
    }
    // When all are there: opening or activating a window changes what the one in front before looks like.
    ContainerInterface *const front = made.value(scene.frontContainer);
    for (int i = 0; i < made.size(); ++i) {
        if (made.at(i) != nullptr && made.at(i) != front) {
            m_window->setPlace(made.at(i), containers.at(i).place);
        }
    }
    if (front != nullptr) {
        const WindowPlace place = containers.at(scene.frontContainer).place;
        if (place.state != WindowPlace::State::Closed) {
            m_window->openContainer(front);
        }
        m_window->setPlace(front, place);
    }
    // A set-up that names no plugin was written for one only; those of the others are offered as at the start.
    for (int plugin = 1; scene.plugin.isEmpty() && plugin < m_workbench->pluginCount(); ++plugin) {
        m_window->addContainer(plugin);
    }
    return errors;
}

void SceneExchange::setUpLayout(const Scene &scene)
{
    const WindowLayout &layout = scene.layout;
    if (layout.size.isValid()) {
        const QScreen *const own = QGuiApplication::screenAt(m_window->geometry().center());
        const QScreen *const screen = own == nullptr ? QGuiApplication::primaryScreen() : own;
        m_window->showNormal();
        m_window->resize(layout.size.boundedTo(screen->availableSize()));
    }
    if (layout.isMaximised) {
        m_window->showMaximized();
    }
    if (!layout.docks.isEmpty()) {
        WindowState::restoreDocks(m_window, layout.docks);
    }
}

int SceneExchange::pluginOf(const SceneContainer &container, QStringList &errors) const
{
    QStringList names;
    for (int plugin = 0; plugin < m_workbench->pluginCount(); ++plugin) {
        names.append(classOf(m_workbench->pluginRoot(plugin)));
    }
    const int plugin = container.plugin.isEmpty() ? 0 : names.indexOf(container.plugin);
    if (plugin < 0) {
        errors.append(SceneExchangeText::tr("no plugin \"%1\" is loaded, only: %2")
                          .arg(container.plugin, quotedList(nearestTexts(container.plugin, names, names.size()))));
    }
    return plugin;
}
