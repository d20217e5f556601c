#pragma once

#include "setup/Scene.h"

#include <QObject>

class ContainerInterface;
class MainWindow;
class Workbench;

/**
 * Opens recordings: adds a module for each, and shows its curves in a plot window.
 *
 * Owned by the main window. The workbench is not owned and has to outlive the opener. GUI thread.
 */
class RecordingOpener : public QObject
{
    Q_OBJECT

public:
    RecordingOpener(Workbench *workbench, MainWindow *window);

    /// Opens the file at \a path, or asks for one if that is empty; reports what is wrong with it.
    void openOrAsk(const QString &path);

    /**
     * Opens the CSV file at \a path. Its curves come into the open plot window that has no curve, or else into a new
     * one. The coming of its module switches off the sources of all other containers: they are chosen again, as they
     * were.
     * \return an empty text, or one line that says what is wrong with the file; nothing has changed then
     */
    QString open(const QString &path);

private:
    ContainerInterface *unusedContainer() const;
    /// Makes the choices when the container has listed the modules anew.
    static void chooseLater(ContainerInterface *container, const SceneContainer &choices);
    SceneContainer curvesOf(const QString &key) const;

    Workbench *const m_workbench; // not owned
    MainWindow *const m_window;   // owner
};
