#pragma once

#include "setup/Scene.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>

class MainWindow;
class QAction;
class QMenu;
class Workbench;

/**
 * The File menu, and the document that it opens and saves: the set-up that the workbench has right now.
 *
 * The window's title shows the document's name and whether it was changed. What counts as a change is what is plotted
 * and how: modules, sources, boxes and options, but not where windows are. Files that are dropped on the window are
 * opened as well. Owned by the window. GUI thread.
 */
class FileMenu : public QObject
{
    Q_OBJECT

public:
    /// Opens a file that is no set-up; asks which one if \a path is empty.
    using Opener = std::function<void(const QString &path)>;

    FileMenu(MainWindow *window, Workbench *workbench);
    ~FileMenu() override;

    /// What windows and desktops call the program.
    static QString programTitle();

    QMenu *menu() const;

    /// CSV files, and Open Recording, go to \a opener from now on.
    void setRecordingOpener(const Opener &opener);

    /// Names what is set up, from \a path unless it is empty; it counts as unchanged.
    void setDocument(const Scene &scene, const QString &name, const QString &path = QString());

    /// From now on a person is asked before changes or a recording are lost, and the title follows the changes.
    void beginSession();
    /// Ends that: the window closes without a question.
    void endSession();

    /// Whether the window may close; asks, if something would be lost.
    bool mayEnd();

    /// Asks, if something would be lost, and opens a set-up, or whatever else there is an opener for.
    void open(const QString &path);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QAction *add(const QString &text, const QString &statusTip, const QKeySequence &shortcut,
                 const std::function<void()> &perform);
    void addNewContainerActions();
    void fillRecentMenu();
    void fillExampleMenu();

    void startAnew();
    void askForFile();
    void openScene(const QString &scenePath, bool isExample);
    bool save();
    bool saveAs();
    bool saveTo(const QString &path);

    bool mayLose(const QString &action);
    bool isModified() const;
    QByteArray comparableText() const;
    Scene taken(QStringList *losses = nullptr) const;
    void showTitle();
    void showErrors(const QString &summary, const QStringList &errors) const;

    MainWindow *const m_window;   // the owner
    Workbench *const m_workbench; // not owned
    QMenu *const m_menu;          // owned by the window
    QMenu *m_recentMenu = nullptr;
    QMenu *m_exampleMenu = nullptr;
    Opener m_recordingOpener;
    QString m_path;  // empty: not yet saved
    QString m_name;  // for the title
    QString m_title; // of the scene; empty: that of the file when it is saved
    quint32 m_seed = 1;
    QByteArray m_savedText; // as comparableText() was
    bool m_isSession = false;
    QTimer m_titleTimer;
};
