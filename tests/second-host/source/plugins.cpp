#include "secondhost/plugins.h"
#include "secondhost/registers.h"

PluginInterface::PluginInterface(QString name, QString title, QString key, PluginHandler *handler, QWidget *parent)
    : QWidget(parent)
    , m_name(name)
    , m_title(title)
    , m_key(key)
    , m_handler(handler) {}

QString PluginInterface::name() { return m_name; }

QString PluginInterface::key() const { return m_key; }

void PluginInterface::aboutToExit() {}

void PluginInterface::setEnabled(bool on) { QWidget::setEnabled(on); }

void PluginInterface::showPlugin() { show(); }

void PluginInterface::hidePlugin() { hide(); }

void PluginInterface::showEvent(QShowEvent *event) { QWidget::showEvent(event); }

void PluginInterface::hideEvent(QHideEvent *event) { QWidget::hideEvent(event); }

ContainerInterface::ContainerInterface(QString const &name, QString const &title, int, PluginHandler *handler, QString,
                                       QWidget *parent)
    : PluginInterface(name, title, name, handler, parent) {}

void ContainerInterface::handleMessageFromToolsPlugin(int, QString) {}

PluginHandler *ContainerInterface::pluginHandler() { return m_handler; }

KAROModuleInterface::KAROModuleInterface(QString name, QString key, int axes, unsigned char address,
                                         CommandHandlerInterface *channel)
    : PluginInterface(name, name, key, nullptr, nullptr)
    , m_axes(axes)
    , m_address(address)
    , m_channel(channel) {}

QString KAROModuleInterface::getAliasName() const { return m_name; }

int KAROModuleInterface::numberOfAxes() { return m_axes; }

unsigned char KAROModuleInterface::moduleAddress() { return m_address; }

CommandHandlerInterface *KAROModuleInterface::commandHandlerInterface() { return m_channel; }

int KAROModuleInterface::getChannel() { return 0; }

QMap<QString, Parameter> *KAROModuleInterface::getParameterMapByName(QString name) {
    const auto found = parameterMaps.find(name);
    return found == parameterMaps.end() ? nullptr : &*found;
}

QString KAROModuleInterface::version() { return QStringLiteral("1"); }

PluginInterface *KAROModuleInterface::clone(QString, PluginHandler *) { return nullptr; }

void KAROModuleInterface::init(QWidget *) {}

QStringList PluginHandler::getModulePluginKeys(bool) {
    QStringList keys;
    for (KAROModuleInterface *module : modules) keys.append(module->key());
    return keys;
}

KAROModuleInterface *PluginHandler::getModulePlugin(QString const &key) {
    for (KAROModuleInterface *module : modules) {
        if (module->key() == key) return module;
    }
    return nullptr;
}
