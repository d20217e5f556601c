#include "Host.h"

#include "Harness.h"

#include "setup/SceneReader.h"
#include "window/ContainerWindow.h"
#include "window/MainWindow.h"
#include "window/Workbench.h"

#include "host/ContainerInterface.h"

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QVBoxLayout>

#include <array>

namespace
{

class WorkbenchHost : public StormHost
{
public:
    WorkbenchHost()
    {
        isRenewedWhole = true;
        make();
    }

    ContainerInterface *container(int index) override
    {
        return m_workbench->containers().at(index);
    }

    QWidget *window(int index) override
    {
        QWidget *const parent = container(index)->parentWidget();
        return parent == nullptr ? nullptr : parent->parentWidget();
    }

    void open(int index) override
    {
        m_window->show();
        m_window->openContainer(container(index));
    }

    void close(int index) override
    {
        if (QWidget *const inner = container(index)->parentWidget()) {
            inner->close();
        }
    }

    void renew(int index) override
    {
        Q_UNUSED(index)
        m_window.reset();
        m_workbench.reset();
        make();
    }

private:
    void make()
    {
        m_workbench = std::make_unique<Workbench>(SimulationClock::Drive::Exchanges, 3);
        const QString problem = m_workbench->loadPlugin(PLUGIN);
        if (!problem.isEmpty()) {
            qFatal("%s", qPrintable(problem));
        }
        const Scene scene = readSceneFile(startScenePath()).scene;
        for (const ModuleSettings &module : scene.modules) {
            m_workbench->modules().add(module, 1);
        }
        m_window = std::make_unique<MainWindow>(m_workbench.get());
        for (int index = 0; index < containerCount; ++index) {
            m_window->addContainer();
        }
        m_window->show();
        frame = m_window.get();
        rack = &m_workbench->modules();
    }

    std::unique_ptr<Workbench> m_workbench;
    std::unique_ptr<MainWindow> m_window;
};

class BareHost : public StormHost
{
public:
    BareHost()
    {
        make(0);
        make(1);
    }

    ~BareHost() override
    {
        for (const QPointer<ContainerInterface> &container : m_containers) {
            destroy(container);
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    ContainerInterface *container(int index) override
    {
        return m_containers.at(static_cast<std::size_t>(index));
    }

    QWidget *window(int index) override
    {
        return container(index)->parentWidget();
    }

    void open(int index) override
    {
        if (window(index) != nullptr) {
            return;
        }
        auto *const dialog = new QDialog;
        auto *const layout = new QVBoxLayout(dialog);
        layout->addWidget(container(index));
        container(index)->init(dialog);
        container(index)->show();
        dialog->show();
    }

    void close(int index) override
    {
        if (auto *const dialog = qobject_cast<QDialog *>(window(index))) {
            dialog->reject();
        }
    }

    void renew(int index) override
    {
        destroy(container(index));
        make(index);
    }

private:
    void make(int index)
    {
        const QString name = QStringLiteral("Plot %1").arg(index);
        m_containers.at(static_cast<std::size_t>(index)) =
            static_cast<ContainerInterface *>(pluginRoot()->clone(name, &m_handler));
    }

    static void destroy(ContainerInterface *container)
    {
        if (QWidget *const window = container->parentWidget()) {
            window->deleteLater();
        }
        delete container;
    }

    PluginHandler m_handler;
    std::array<QPointer<ContainerInterface>, containerCount> m_containers;
};

} // namespace

std::unique_ptr<StormHost> StormHost::make(const QString &kind)
{
    return kind == "workbench" ? std::unique_ptr<StormHost>(new WorkbenchHost) : std::make_unique<BareHost>();
}
