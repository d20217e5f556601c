#include "window/FileMenu.h"

#include "logging/Recordings.h"
#include "setup/SceneReader.h"
#include "setup/SceneWriter.h"
#include "window/MainWindow.h"
#include "window/RecentFiles.h"
#include "window/SceneExchange.h"
#include "window/Workbench.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>

namespace
{

constexpr int titleIntervalMs = 1000;
constexpr int maximumShownErrors = 12;

QString suffix()
{
    return QStringLiteral("xyplot");
}

/// The one local file of a drag; empty when it is something else.
QString fileOf(const QMimeData *data)
{
    const QList<QUrl> urls = data->urls();
    return urls.size() == 1 ? urls.constFirst().toLocalFile() : QString();
}

} // namespace

FileMenu::FileMenu(MainWindow *window, Workbench *workbench)
    : QObject(window), m_window(window), m_workbench(workbench), m_menu(new QMenu(tr("&File"), window))
{
    add(tr("&New Set-Up"), tr("Begin again with one module of each kind and an empty container"),
        QKeySequence(QStringLiteral("Ctrl+Shift+N")), [this] { startAnew(); });
    add(tr("&Open..."), tr("Open a set-up: modules, containers and what they show"), QKeySequence::Open,
        [this] { askForFile(); });
    add(tr("Open Recor&ding..."), tr("Play a CSV file that was logged, and show its curves"),
        QKeySequence(QStringLiteral("Ctrl+Shift+O")), [this] {
            if (m_recordingOpener) {
                m_recordingOpener(QString());
            }
        });
    m_recentMenu = m_menu->addMenu(tr("Open &Recent"));
    m_recentMenu->menuAction()->setStatusTip(tr("Open a set-up that was opened or saved before"));
    connect(m_recentMenu, &QMenu::aboutToShow, this, &FileMenu::fillRecentMenu);
    m_exampleMenu = m_menu->addMenu(tr("&Examples"));
    m_exampleMenu->menuAction()->setStatusTip(tr("Open one of the set-ups that came with the program"));
    fillExampleMenu();
    m_menu->addSeparator();
    add(tr("&Save"), tr("Save the set-up to its file"), QKeySequence::Save, [this] { save(); });
    add(tr("Save &As..."), tr("Save the set-up to another file"), QKeySequence(QStringLiteral("Ctrl+Shift+S")),
        [this] { saveAs(); });
    m_menu->addSeparator();
    addNewContainerActions();
    m_menu->addSeparator();
    add(tr("&Quit"), tr("Close all windows and end the program"), QKeySequence(QStringLiteral("Ctrl+Q")), [this] {
        m_window->close();
    })->setMenuRole(QAction::QuitRole);

    connect(&m_titleTimer, &QTimer::timeout, this, &FileMenu::showTitle);
    m_window->setAcceptDrops(true);
    m_window->installEventFilter(this);
}

FileMenu::~FileMenu() = default;

QString FileMenu::programTitle()
{
    return QStringLiteral("XY Plot Workbench");
}

QMenu *FileMenu::menu() const
{
    return m_menu;
}

void FileMenu::setRecordingOpener(const Opener &opener)
{
    m_recordingOpener = opener;
}

void FileMenu::setDocument(const Scene &scene, const QString &name, const QString &path)
{
    m_name = name;
    m_path = path.isEmpty() ? QString() : QFileInfo(path).absoluteFilePath();
    m_title = scene.title;
    m_seed = scene.seed;
    m_savedText = comparableText();
    showTitle();
}

void FileMenu::beginSession()
{
    m_isSession = true;
    if (m_name.isEmpty()) {
        Scene scene;
        scene.seed = m_seed;
        setDocument(scene, tr("New set-up"));
    }
    m_titleTimer.start(titleIntervalMs);
}

void FileMenu::endSession()
{
    m_isSession = false;
    m_titleTimer.stop();
}

bool FileMenu::mayEnd()
{
    return mayLose(tr("Quit"));
}

void FileMenu::open(const QString &path)
{
    if (m_recordingOpener && path.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive)) {
        m_recordingOpener(path);
        return;
    }
    if (!QFileInfo::exists(path)) {
        const bool wasKnown = RecentFiles::paths().contains(QFileInfo(path).absoluteFilePath());
        RecentFiles::remove(path);
        showErrors(tr("There is no file \"%1\".").arg(QDir::toNativeSeparators(path)),
                   wasKnown ? QStringList(tr("It was taken from the list of recent files.")) : QStringList());
        return;
    }
    openScene(path, false);
}

bool FileMenu::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::DragEnter || event->type() == QEvent::Drop) {
        auto *const drop = static_cast<QDropEvent *>(event);
        const QString path = fileOf(drop->mimeData());
        if (path.isEmpty() || QApplication::activeModalWidget() != nullptr) {
            return false;
        }
        drop->acceptProposedAction();
        if (event->type() == QEvent::Drop) {
            // Not while the other program waits for the end of the drag: opening may ask.
            QTimer::singleShot(0, this, [this, path] { open(path); });
        }
        return true;
    }
    return QObject::eventFilter(watched, event);
}

QAction *FileMenu::add(const QString &text, const QString &statusTip, const QKeySequence &shortcut,
                       const std::function<void()> &perform)
{
    QAction *const action = m_menu->addAction(text, this, perform);
    action->setStatusTip(statusTip);
    action->setShortcut(shortcut);
    return action;
}

void FileMenu::addNewContainerActions()
{
    for (int plugin = 0; plugin < m_workbench->pluginCount(); ++plugin) {
        // The text does not name the container while there is but one kind.
        const QString text =
            m_workbench->pluginCount() == 1 ? tr("New &Container") : tr("New %1").arg(m_workbench->pluginTitle(plugin));
        add(text, tr("Make one more container and open it"), plugin == 0 ? QKeySequence::New : QKeySequence(),
            [this, plugin] {
                if (ContainerInterface *const container = m_window->addContainer(plugin)) {
                    m_window->openContainer(container);
                }
            });
    }
}

void FileMenu::fillRecentMenu()
{
    m_recentMenu->clear();
    const QStringList paths = RecentFiles::paths();
    int number = 1;
    for (const QString &path : paths) {
        const QFileInfo file(path);
        const QString name = tr("%1 in %2").arg(file.fileName(), QDir::toNativeSeparators(file.absolutePath()));
        QAction *const action = m_recentMenu->addAction(
            QStringLiteral("&%1 ").arg(number++ % 10) + QString(name).replace(QLatin1Char('&'), QStringLiteral("&&")),
            this, [this, path] { open(path); });
        action->setStatusTip(QDir::toNativeSeparators(path));
    }
    if (paths.isEmpty()) {
        m_recentMenu->addAction(tr("No set-up was opened or saved yet"))->setEnabled(false);
        return;
    }
    m_recentMenu->addSeparator();
    m_recentMenu->addAction(tr("&Clear List"), this, &RecentFiles::clear)
        ->setStatusTip(tr("Forget the recent files; the files stay"));
}

void FileMenu::fillExampleMenu()
{
    const QStringList names = shippedScenes();
    for (const QString &name : names) {
        const QString path = shippedScenePath(name);
        const QString title = readSceneFile(path).scene.shownTitle();
        m_exampleMenu->addAction(title, this, [this, path] { openScene(path, true); })
            ->setStatusTip(tr("Set up \"%1\" in place of what is there").arg(title));
    }
}

void FileMenu::startAnew()
{
    if (!mayLose(tr("Begin Again"))) {
        return;
    }
    Scene scene = readSceneFile(startScenePath()).scene;
    const QStringList errors = SceneExchange(m_workbench, m_window).replaceBy(scene);
    if (!errors.isEmpty()) {
        showErrors(tr("A new set-up cannot be made; what was there stays."), errors);
        return;
    }
    scene.title.clear();
    setDocument(scene, tr("New set-up"));
}

void FileMenu::askForFile()
{
    const QString path = QFileDialog::getOpenFileName(m_window, tr("Open Set-Up"), QFileInfo(m_path).absolutePath(),
                                                      tr("Set-ups (*.%1 *.json)").arg(suffix()) + QStringLiteral(";;") +
                                                          tr("All files (*)"));
    if (!path.isEmpty()) {
        open(path);
    }
}

void FileMenu::openScene(const QString &scenePath, bool isExample)
{
    const SceneResult read = readSceneFile(scenePath);
    const QString name = isExample ? read.scene.shownTitle() : QFileInfo(scenePath).fileName();
    QStringList errors = read.errors;
    if (errors.isEmpty() && !mayLose(tr("Open"))) {
        return;
    }
    if (errors.isEmpty()) {
        errors = SceneExchange(m_workbench, m_window).replaceBy(read.scene);
    }
    if (!errors.isEmpty()) {
        showErrors(tr("\"%1\" cannot be set up; what was there stays.").arg(name), errors);
        return;
    }
    setDocument(read.scene, name, isExample ? QString() : scenePath);
    if (!isExample) {
        RecentFiles::add(scenePath);
    }
}

bool FileMenu::save()
{
    return m_path.isEmpty() ? saveAs() : saveTo(m_path);
}

bool FileMenu::saveAs()
{
    QFileDialog dialog(m_window, tr("Save Set-Up"), QFileInfo(m_path).absolutePath(),
                       tr("Set-ups (*.%1 *.json)").arg(suffix()));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(suffix());
    dialog.selectFile(m_path.isEmpty() ? QStringLiteral("set-up.") + suffix() : m_path);
    return dialog.exec() == QDialog::Accepted && saveTo(dialog.selectedFiles().constFirst());
}

bool FileMenu::saveTo(const QString &path)
{
    QStringList losses;
    Scene scene = taken(&losses);
    if (m_path.isEmpty()) { // an example keeps its title to itself
        const QFileInfo file(path);
        scene.title = file.completeBaseName().trimmed().isEmpty() ? file.fileName() : file.completeBaseName();
    }
    const QString problem = writeSceneFile(scene, path);
    if (!problem.isEmpty()) {
        showErrors(tr("The set-up was not saved."), {problem});
        return false;
    }
    setDocument(scene, QFileInfo(path).fileName(), path);
    RecentFiles::add(path);
    if (!losses.isEmpty()) {
        showErrors(tr("The set-up was saved, but not all of it can be kept:"), losses);
    }
    return true;
}

/// Whether all changes are saved or may be lost, and no recording runs or it may end; \a action is what a person wants.
bool FileMenu::mayLose(const QString &action)
{
    const bool isRecording = m_window->recordings()->isRecording();
    const bool hasChanges = m_isSession && isModified();
    if (!m_isSession || !(isRecording || hasChanges)) {
        return true;
    }
    QMessageBox question(QMessageBox::Question, programTitle(),
                         hasChanges ? tr("Save the changes to \"%1\"?").arg(m_name)
                                    : tr("A recording is running, and would end."),
                         QMessageBox::NoButton, m_window);
    if (hasChanges && isRecording) {
        question.setInformativeText(tr("A recording is running, and will end. Its lines are in the file."));
    } else if (isRecording) {
        question.setInformativeText(m_window->recordings()->summary());
    }
    const QPushButton *const saveButton = hasChanges ? question.addButton(QMessageBox::Save) : nullptr;
    const QPushButton *const goOnButton =
        hasChanges ? question.addButton(QMessageBox::Discard) : question.addButton(action, QMessageBox::AcceptRole);
    question.setDefaultButton(hasChanges ? QMessageBox::Save : QMessageBox::NoButton);
    question.setEscapeButton(question.addButton(QMessageBox::Cancel));
    question.exec();
    if (saveButton != nullptr && question.clickedButton() == saveButton) {
        return save();
    }
    return question.clickedButton() == goOnButton;
}

bool FileMenu::isModified() const
{
    return comparableText() != m_savedText;
}

/// What is there, without where windows are and which page is looked at.
QByteArray FileMenu::comparableText() const
{
    Scene scene = taken();
    scene.title.clear();
    scene.layout = {};
    scene.frontContainer = 0;
    scene.place = {};
    scene.selectedCurve = 0;
    for (SceneContainer &container : scene.furtherContainers) {
        container.place = {};
        container.selectedCurve = 0;
    }
    return sceneText(scene);
}

Scene FileMenu::taken(QStringList *losses) const
{
    Scene scene = SceneExchange(m_workbench, m_window).taken(losses);
    scene.title = m_title;
    scene.seed = m_seed;
    return scene;
}

void FileMenu::showTitle()
{
    const QString title = QStringLiteral("%1[*] - %2").arg(m_name, programTitle());
    if (m_window->windowTitle().indexOf(title) != 0) { // a maximised container adds its own
        m_window->setWindowTitle(title);
    }
    m_window->setWindowModified(m_isSession && isModified());
}

void FileMenu::showErrors(const QString &summary, const QStringList &errors) const
{
    QStringList shown = errors.mid(0, maximumShownErrors);
    if (errors.size() > shown.size()) {
        shown.append(tr("and %1 more").arg(errors.size() - shown.size()));
    }
    QMessageBox box(QMessageBox::Warning, programTitle(), summary, QMessageBox::Ok, m_window);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(shown.join(QLatin1Char('\n')));
    box.exec();
}
