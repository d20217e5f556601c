#pragma once

#include <QObject>
#include <QPointer>

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

    /// Asks for a file and opens it; reports what is wrong with it.
    void ask();

    /**
     * Opens the CSV file at \a path. Its curves come into the open plot window that has no curve, or else into a new
     * one.
     * \return an empty text, or one line that says what is wrong with the file; nothing has changed then
     */
    QString open(const QString &path);

private:
    ContainerInterface *unusedContainer() const;
    void showCurves(const QString &key, ContainerInterface *container);

    Workbench *const m_workbench; // not owned
    MainWindow *const m_window;   // owner
};
