#include "secondhost/plugin_bases.hpp"

#include "secondhost/register_list.hpp"

PluginInterface::PluginInterface(QString name, QString title, QString icon_path,
                                 PluginHandler* handler, QWidget* parent)
    : QWidget(parent),
      name_(name),
      title_(title),
      icon_path_(icon_path),
      handler_(handler),
      key_(name) {
  // The name of its group in the settings.
  setObjectName(name);
}

QString PluginInterface::version() { return QString(); }

void PluginInterface::aboutToExit() {}

void PluginInterface::setEnabled(bool enabled) { QWidget::setEnabled(enabled); }

void PluginInterface::showPlugin() { show(); }

void PluginInterface::hidePlugin() { hide(); }

PluginInterface* PluginInterface::clone(QString, PluginHandler*) {
  return nullptr;
}

void PluginInterface::init(QWidget*) {}

QString PluginInterface::name() { return name_; }

QString PluginInterface::key() const { return key_; }

void PluginInterface::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
}

void PluginInterface::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
}

ContainerInterface::ContainerInterface(QString const& name,
                                       QString const& title, int,
                                       PluginHandler* handler,
                                       QString icon_path, QWidget* parent)
    : PluginInterface(name, title, icon_path, handler, parent) {}

void ContainerInterface::handleMessageFromToolsPlugin(int, QString) {}

void ContainerInterface::handleModulePlugin(KAROModuleInterface*, QString) {}

void ContainerInterface::finished(int) {}

PluginHandler* ContainerInterface::pluginHandler() { return handler_; }

KAROModuleInterface::KAROModuleInterface(QString name, QString key)
    : PluginInterface(name, name, QString(), nullptr, nullptr) {
  key_ = key;
}

QString KAROModuleInterface::getAliasName() const { return name_; }

int KAROModuleInterface::numberOfAxes() { return axes_; }

int KAROModuleInterface::moduleAddress() { return address_; }

CommandHandlerInterface* KAROModuleInterface::commandHandlerInterface() {
  return command_channel_;
}

int KAROModuleInterface::getChannel() { return channel_; }

QMap<QString, Parameter>* KAROModuleInterface::getParameterMapByName(
    QString name) {
  return parameters_.contains(name) ? &parameters_[name] : nullptr;
}

QStringList PluginHandler::getModulePluginKeys(bool) {
  QStringList keys;
  for (KAROModuleInterface* module : modules_) keys.append(module->key());
  return keys;
}

PluginInterface* PluginHandler::getModulePlugin(QString const& key) {
  for (KAROModuleInterface* module : modules_) {
    if (module->key() == key) return module;
  }
  return nullptr;
}
