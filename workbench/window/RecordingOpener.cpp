#include "window/RecordingOpener.h"

#include "PlotterWindow.h"
#include "modules/recording/RecordedModule.h"
#include "setup/ChoiceReader.h"
#include "setup/RecordingCurves.h"
#include "setup/SceneRunner.h"
#include "window/MainWindow.h"
#include "window/Workbench.h"

#include "host/ContainerInterface.h"

#include <QComboBox>
#include <QDebug>
#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>

namespace
{

/// Longer than containers take to list the modules anew when one has come.
constexpr int listingTimeMs = 50;

/// Whether a value is chosen on some page; also when it is no plot window.
bool isUsed(const QWidget *container)
{
    for (int curve = 0; curve < Scene::maximumCurves; ++curve) {
        for (const auto side : {PlotterWindow::Side::X, PlotterWindow::Side::Y}) {
            const auto *const modules =
                container->findChild<QComboBox *>(PlotterWindow::selectorPage(curve, side).modules);
            if (modules == nullptr || !modules->currentText().trimmed().isEmpty()) {
                return true; // or no plot window
            }
        }
    }
    return false;
}

} // namespace

RecordingOpener::RecordingOpener(Workbench *workbench, MainWindow *window)
    : QObject(window), m_workbench(workbench), m_window(window)
{
}

void RecordingOpener::openOrAsk(const QString &path)
{
    const QString chosen = !path.isEmpty()
                               ? path
                               : QFileDialog::getOpenFileName(m_window, tr("Open Recording"), QString(),
                                                              tr("Recordings (*.csv *.txt *.tsv);;All files (*)"));
    const QString problem = chosen.isEmpty() ? QString() : open(chosen);
    if (!problem.isEmpty()) {
        QMessageBox box(QMessageBox::Warning, tr("Open Recording"), problem, QMessageBox::Ok, m_window);
        box.setTextFormat(Qt::PlainText); // it shows texts of the file
        box.exec();
    }
}

QString RecordingOpener::open(const QString &path)
{
    ModuleRack &rack = m_workbench->modules();
    QStringList taken;
    for (int index = 0; index < rack.count(); ++index) {
        taken.append(rack.settings(index).key);
    }
    RecordingSettings recording;
    recording.file = path;
    const QString key = recordingKey(path, taken);
    ContainerInterface *const unused = unusedContainer();
    QList<QPair<ContainerInterface *, SceneContainer>> used;
    const QList<ContainerInterface *> containers = m_workbench->containers();
    for (ContainerInterface *const other : containers) {
        if (other != unused) {
            used.append({other, readChoices(other).choices});
        }
    }
    QString problem = rack.add({key, recording});
    if (!problem.isEmpty()) {
        return problem;
    }
    for (const auto &[other, choices] : qAsConst(used)) {
        QTimer::singleShot(listingTimeMs, other, [other = other, choices = choices] { choose(other, choices); });
    }
    ContainerInterface *const container = unused != nullptr ? unused : m_window->addContainer();
    if (container != nullptr) {
        m_window->openContainer(container);
        QTimer::singleShot(listingTimeMs, this, [this, shown = QPointer<ContainerInterface>(container), key] {
            if (!shown.isNull()) {
                choose(shown, curvesOf(key));
            }
        });
    }
    return {};
}

ContainerInterface *RecordingOpener::unusedContainer() const
{
    const QList<ContainerInterface *> containers = m_workbench->containers();
    for (ContainerInterface *const container : containers) {
        if (container->isVisible() && !isUsed(container)) {
            return container;
        }
    }
    return nullptr;
}

void RecordingOpener::choose(ContainerInterface *container, const SceneContainer &choices)
{
    const QString problem = choices.curves.isEmpty() ? QString() : SceneRunner(container).apply(choices);
    if (!problem.isEmpty()) {
        qWarning().noquote() << tr("%1: %2").arg(container->windowTitle(), problem);
    }
}

SceneContainer RecordingOpener::curvesOf(const QString &key) const
{
    SceneContainer choices;
    const ModuleRack &rack = m_workbench->modules();
    for (int index = 0; index < rack.count(); ++index) {
        const auto *const module = rack.settings(index).key == key ? rack.moduleAs<RecordedModule>(index) : nullptr;
        if (module != nullptr) {
            choices.curves = recordingCurves(module->file().columns(), key);
        }
    }
    return choices;
}
