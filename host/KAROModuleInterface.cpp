#include "host/KAROModuleInterface.h"

namespace
{

constexpr int moduleTypeCode = 1;

} // namespace

KAROModuleInterface::KAROModuleInterface(const QString &name, const QString &key, PluginHandler *handler,
                                         const QString &iconPath, QWidget *parent)
    : PluginInterface(name, name, moduleTypeCode, handler, iconPath, parent)
{
    setKey(key);
}

KAROModuleInterface::~KAROModuleInterface() = default;
