#include "modules/simulation/ModuleKind.h"

#include <QCoreApplication>

#include <algorithm>

const std::vector<ModuleKind> &simulatedModuleKinds()
{
    static const std::vector<ModuleKind> kinds = {stepperKind(), servoKind(), inputOutputKind()};
    return kinds;
}

const ModuleKind *findModuleKind(const QString &name)
{
    const std::vector<ModuleKind> &kinds = simulatedModuleKinds();
    const auto found = std::find_if(kinds.begin(), kinds.end(),
                                    [&name](const ModuleKind &kind) { return name == QLatin1String(kind.name); });
    return found == kinds.end() ? nullptr : &*found;
}

QString shownSummary(const ModuleKind &kind)
{
    return QCoreApplication::translate("ModuleKind", kind.summary);
}
