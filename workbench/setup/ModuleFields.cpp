#include "setup/ModuleFields.h"

#include "reading/FieldReader.h"
#include "setup/DeviceFields.h"
#include "setup/RecordingFields.h"
#include "setup/SimulationFields.h"

const std::vector<ModuleFields> &moduleFields()
{
    static const std::vector<ModuleFields> families = {simulationFields(), tcpDeviceFields(), rtuDeviceFields(),
                                                       recordingFields()};
    return families;
}

ModuleSettings readModule(FieldReader &reader, const QJsonObject &object, const QString &place, bool &isPluggedIn)
{
    QStringList kinds;
    for (const ModuleFields &family : moduleFields()) {
        kinds += family.kinds;
    }
    ModuleSettings settings;
    settings.key = reader.text(object, place, QStringLiteral("key"));
    isPluggedIn = reader.boolean(object, place, QStringLiteral("pluggedIn"), true);
    const QString kind = reader.choice(object, place, QStringLiteral("kind"), kinds);
    for (const ModuleFields &family : moduleFields()) {
        if (family.kinds.contains(kind)) {
            const QStringList common = {QStringLiteral("kind"), QStringLiteral("key"), QStringLiteral("pluggedIn")};
            reader.allowOnly(object, place, common + family.names);
            settings.family = family.read(reader, object, place);
        }
    }
    return settings;
}

QJsonObject writeModule(const ModuleSettings &settings, bool isPluggedIn)
{
    QJsonObject object;
    for (const ModuleFields &family : moduleFields()) {
        const QJsonObject fields = family.write(settings);
        if (!fields.isEmpty()) {
            object = fields;
        }
    }
    object.insert(QStringLiteral("key"), settings.key);
    object.insert(QStringLiteral("pluggedIn"), isPluggedIn);
    return object;
}
