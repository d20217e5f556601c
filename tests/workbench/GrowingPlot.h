#pragma once

#include "GuardedTest.h"
#include "logging/Recordings.h"
#include "setup/MouseClick.h"
#include "setup/SceneReader.h"
#include "setup/SceneRunner.h"
#include "window/MainWindow.h"
#include "window/RecordingPanel.h"
#include "window/Workbench.h"

#include "host/ContainerInterface.h"

#include <functional>
#include <memory>

/// The main window with the real plugin and the curves of a scene, which grow.
struct GrowingPlot
{
    explicit GrowingPlot(const QString &sceneName = "circle")
        : GrowingPlot(readSceneFile(shippedScenePath(sceneName)).scene)
    {
    }

    explicit GrowingPlot(const Scene &scene)
    {
        // The file dialog keeps its folders in a file of the user's.
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, qtSettings.path());
        QCOMPARE(workbench.loadPlugin(PLUGIN), QString());
        for (const ModuleSettings &module : scene.modules) {
            QCOMPARE(workbench.modules().add(module), QString());
        }
        window = std::make_unique<MainWindow>(&workbench);
        window->show();
        container = window->addContainer();
        window->openContainer(container);
        watch = window->recordings()->watch(container);
        choose(scene);
        // Both values of the first curve have come.
        QTRY_VERIFY_WITH_TIMEOUT(scene.curves.isEmpty() || workbench.modules().answeredRequests() > 2, maximumWaitMs);
        QObject::connect(&workbench.messages(), &MessageLog::arrived, window.get(),
                         [this](const QVector<LogMessage> &messages) {
                             for (const LogMessage &message : messages) {
                                 noted.append(message.type == QtDebugMsg ? QStringList() : QStringList(message.text));
                             }
                         });
    }

    /// Makes the choices of a scene in the container.
    void choose(const SceneContainer &choices) const
    {
        QCOMPARE(SceneRunner(container).apply(choices), QString());
    }

    /// Clicks the box of the container, and types a name into the dialog, which \a look is called with.
    static void record(
        const RecordingWatch *watch, const QString &path,
        const std::function<void(QFileDialog *)> &look = [](QFileDialog *) {})
    {
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
            if (auto *const dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget())) {
                timer.stop();
                look(dialog);
                dialog->selectFile(path);
                static_cast<QDialog *>(dialog)->accept();
            }
        });
        timer.start(0);
        MouseClick::on(watch->box()); // returns when the dialog is closed
    }

    /// Records until some lines are in the file.
    void recordLines(const QString &path) const
    {
        record(watch, path);
        QTRY_VERIFY_WITH_TIMEOUT(linesOf(path).size() > 6, maximumWaitMs);
        poll();
    }

    /// Has the recordings looked at.
    void poll() const
    {
        window->recordings()->poll();
    }

    ModuleRack &modules()
    {
        return workbench.modules();
    }

    QCheckBox *curveBox(int curve) const
    {
        return PlotterWindow::curveBoxes(container).at(curve);
    }

    /// One of the docks "module", "message", "recording" and "exchange".
    QDockWidget *dock(const char *panel) const
    {
        return window->findChild<QDockWidget *>(QString("%1Dock").arg(panel));
    }

    /// Shows it in front of the others.
    QDockWidget *raisedDock(const char *panel) const
    {
        QDockWidget *const raised = dock(panel);
        raised->show();
        raised->raise();
        return raised;
    }

    /// The texts of the labels that are shown in \a widget, and of the symbols the text "symbol".
    static QStringList labelsIn(const QWidget *widget)
    {
        QStringList texts;
        for (const QLabel *const label : partsOf<QLabel>(*widget)) {
            if (label->isVisibleTo(widget)) {
                texts.append(label->pixmap(Qt::ReturnByValue).isNull() ? label->text() : "symbol");
            }
        }
        return texts;
    }

    QStringList recordingPanel() const
    {
        return labelsIn(window->findChild<RecordingPanel *>());
    }

    const QLabel *answersLabel() const
    {
        for (const QLabel *const label : partsOf<QLabel>(*window->statusBar())) {
            if (label->text().contains(" answers/s")) {
                return label;
            }
        }
        qFatal("no label with the rate of answers");
    }

    QStringList noted; ///< messages that were delivered, without debug lines
    const QTemporaryDir qtSettings;
    Workbench workbench{SimulationClock::Drive::Exchanges, 14};
    std::unique_ptr<MainWindow> window;
    ContainerInterface *container = nullptr;
    RecordingWatch *watch = nullptr;
};
