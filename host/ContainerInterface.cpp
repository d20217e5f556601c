#include "host/ContainerInterface.h"

#include "host/PluginHandler.h"

ContainerInterface::ContainerInterface(const QString &name, const QString &title, int type, PluginHandler *handler,
                                       QString iconPath, QWidget *parent)
    : PluginInterface(name, title, type, handler, iconPath, parent)
{
    if (handler != nullptr) {
        handler->addContainer(this);
    }
}

ContainerInterface::~ContainerInterface()
{
    if (PluginHandler *const registry = pluginHandler()) {
        registry->removeContainer(this);
    }
}

void ContainerInterface::handleMessageFromToolsPlugin(int code, QString message)
{
    Q_UNUSED(code)
    Q_UNUSED(message)
}

void ContainerInterface::handleModulePlugin(KAROModuleInterface *module, QString message)
{
    Q_UNUSED(module)
    Q_UNUSED(message)
}

void ContainerInterface::finished(int code)
{
    Q_UNUSED(code)
}

PluginHandler *ContainerInterface::pluginHandler() const
{
    return handler();
}
