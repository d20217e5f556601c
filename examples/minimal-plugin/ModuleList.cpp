#include "ModuleList.h"

#include "host/CommandHandlerInterface.h"
#include "host/DynamicProperty.h"
#include "host/KAROModuleInterface.h"
#include "host/PluginHandler.h"

#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

namespace
{

const char containerTitle[] = "Modules";
constexpr int containerType = 6;                  // the number by which the host recognises the kind of plugin
constexpr unsigned char commandAxisParameter = 6; // reads a parameter of one motor
constexpr int readIntervalMs = 500;

/// The parameter with the lowest number of the module's motor 0 that can be read; null when there is none.
const Parameter *firstReadable(KAROModuleInterface *module)
{
    const QMap<QString, Parameter> *const parameters = module->getParameterMapByName(QStringLiteral("axis0"));
    const Parameter *first = nullptr;
    if (parameters != nullptr) {
        for (const Parameter &parameter : *parameters) {
            const bool isReadable = parameter.access.contains(QLatin1Char('r'));
            first = isReadable && (first == nullptr || parameter.number < first->number) ? &parameter : first;
        }
    }
    return first;
}

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
        connect(&m_timer, &QTimer::timeout, this, &ModuleList::readValues);
        m_timer.start(readIntervalMs);
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
    m_rows.clear();
    const QStringList keys = pluginHandler()->getModulePluginKeys(true);
    for (const QString &key : keys) {
        KAROModuleInterface *const module = pluginHandler()->getModulePlugin(key);
        Row row;
        row.key = key;
        row.text = tr("%1: %2, axes: %3").arg(key, module->getAliasName()).arg(module->numberOfAxes());
        if (const Parameter *const parameter = firstReadable(module)) {
            row.valueName = parameter->name;
            row.combo.request.setAddress(module->moduleAddress());
            row.combo.request.setCommand(commandAxisParameter);
            row.combo.request.setType(static_cast<unsigned short>(parameter->number));
            row.combo.request.setMotorBank(0);
        }
        m_list->addItem(row.text);
        m_rows.push_back(row);
    }
    m_count->setText(tr("Connected modules: %1").arg(keys.size()));
}

void ModuleList::readValues()
{
    if (!isVisible()) {
        return; // each exchange blocks the host's thread: nothing is read that nobody sees
    }
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        Row &row = m_rows[i];
        KAROModuleInterface *const module = pluginHandler()->getModulePlugin(row.key);
        if (row.valueName.isEmpty() || module == nullptr) {
            continue;
        }
        // Returns when the reply is there. A module that does not answer leaves the last one; 0 before the first.
        module->commandHandlerInterface()->sendCommandCombos({&row.combo});
        const QString value = QString::number(row.combo.reply.value());
        m_list->item(static_cast<int>(i))->setText(tr("%1; %2: %3").arg(row.text, row.valueName, value));
    }
}
