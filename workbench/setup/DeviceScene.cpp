#include "setup/DeviceScene.h"

#include "modules/modbus/DeviceText.h"
#include "modules/modbus/RegisterMapReader.h"
#include "modules/modbus/RegisterMapRows.h"

#include <algorithm>

namespace
{

/// What a person chooses to see the value of \a row.
SceneSource sourceOf(const RegisterMapRow &row, const QString &key, bool hasMotorChoice)
{
    SceneSource source;
    source.module = key;
    source.value = row.shownName();
    if (hasMotorChoice) {
        source.motor = row.group == RegisterMap::Group::Register ? QStringLiteral("Register")
                                                                 : QStringLiteral("Axis %1").arg(row.motorBank);
    }
    return source;
}

void chooseCurve(Scene &scene, const RegisterMap &map, const QString &key)
{
    using Group = RegisterMap::Group;
    const QVector<RegisterMapRow> rows = registerMapRows(map);
    const int axes = map.axisCount();
    const auto isRegister = [](const RegisterMapRow &row) { return row.group == Group::Register; };
    // A module with one axis and nothing else shows its table without a choice.
    const bool hasMotorChoice = axes > 1 || std::any_of(rows.cbegin(), rows.cend(), isRegister);
    QList<SceneSource> sources;
    for (const RegisterMapRow &row : rows) {
        const bool isShown = axes > 0 ? row.group == Group::Axis : isRegister(row) && row.fractions.isEmpty();
        if (isShown && sources.size() < 2) {
            sources.append(sourceOf(row, key, hasMotorChoice));
        }
    }
    if (sources.size() == 2) {
        SceneCurve curve;
        curve.x = sources.at(0);
        curve.y = sources.at(1);
        scene.curves.append(curve);
    }
}

} // namespace

QString addDevices(Scene &scene, const QList<DeviceSettings> &devices)
{
    for (int number = 0; number < devices.size(); ++number) {
        const DeviceSettings &device = devices.at(number);
        const RegisterMapResult map = readRegisterMapFile(device.mapFile);
        if (!map.error.isEmpty()) {
            return map.error;
        }
        const QString key = deviceKey(number, device);
        scene.modules.append({key, device});
        if (number == 0 && scene.curves.isEmpty()) {
            scene.title = map.map.title;
            chooseCurve(scene, map.map, key);
        }
    }
    return {};
}
