#pragma once

#include "setup/Scene.h"

#include <QStringList>

class ContainerInterface;
class MainWindow;
class Workbench;

/**
 * Takes what there is in the workbench as a scene, and puts another scene in its place.
 *
 * Neither workbench nor window is owned; both have to outlive this. GUI thread.
 */
class SceneExchange
{
public:
    SceneExchange(Workbench *workbench, MainWindow *window);

    /**
     * What there is, with its layout. Title and seed are not among it.
     * \param losses gets a line for each thing that is shown and that the scene does not hold
     */
    Scene taken(QStringList *losses = nullptr) const;

    /**
     * Makes \a scene what there is: other modules, other containers. Recordings end, points are gone.
     *
     * The scene is first set up aside, with modules and containers of its own that nobody sees.
     * \return one line for each thing that cannot be set up; when there is any, all is as it was before
     */
    QStringList replaceBy(const Scene &scene);

    /// As replaceBy(), without setting it up aside first: when there is an error, part of it is set up.
    QStringList setUp(const Scene &scene);

private:
    QStringList tryAside(const Scene &scene) const;
    QStringList setUpModules(const Scene &scene);
    QStringList setUpContainers(const Scene &scene);
    void setUpLayout(const Scene &scene);
    /// The plugin that makes \a container; -1 when none does, and then \a errors gets a line.
    int pluginOf(const SceneContainer &container, QStringList &errors) const;

    Workbench *const m_workbench; // not owned
    MainWindow *const m_window;   // not owned
};
