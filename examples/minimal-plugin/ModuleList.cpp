#include "ModuleList.h"

#include "host/DynamicProperty.h"
#include "host/KAROModuleInterface.h"
#include "host/PluginHandler.h"

#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

namespace
{

const char containerTitle[] = "Modules";
constexpr int containerType = 6;

} // namespace

// The root object has no registry, and needs none: only its clones are shown.
ModuleList::ModuleList() : ModuleList(QStringLiteral("undefined"), nullptr) {}

ModuleList::ModuleList(const QString &name, PluginHandler *handler)
    : ContainerInterface(name, QString::fromLatin1(containerTitle), containerType, handler, QString(), nullptr)
{
    setProperty(DynamicProperty::ShowOnToolbar, true); // the host makes a button that opens the container
}

QString ModuleList::version()
{
    return QStringLiteral("1.0");
}

ModuleList *ModuleList::clone(QString name, PluginHandler *handler)
{
    return new ModuleList(name, handler);
}

void ModuleList::init(QWidget *window)
{
    Q_UNUSED(window)
    if (m_list == nullptr) { // widgets are created at the first opening and kept
        m_count = new QLabel;
        m_list = new QListWidget;
        auto *const layout = new QVBoxLayout(this);
        layout->addWidget(m_count);
        layout->addWidget(m_list);
    }
    // A window within the host's workspace. Without it the container gets a top-level window.
    setProperty(DynamicProperty::WindowFlags, static_cast<unsigned int>(Qt::SubWindow));
    showModules();
}

void ModuleList::handleModulePlugin(KAROModuleInterface *module, QString message)
{
    // The registry is already up to date. A module that goes is destroyed after this call: pointers to it have to be
    // cleared here.
    Q_UNUSED(module)
    Q_UNUSED(message)
    if (m_list != nullptr) {
        showModules();
    }
}

void ModuleList::showModules()
{
    m_list->clear();
    const QStringList keys = pluginHandler()->getModulePluginKeys(true);
    for (const QString &key : keys) {
        KAROModuleInterface *const module = pluginHandler()->getModulePlugin(key);
        m_list->addItem(tr("%1: %2, axes: %3").arg(key, module->getAliasName()).arg(module->numberOfAxes()));
    }
    m_count->setText(tr("Connected modules: %1").arg(keys.size()));
}
