#include "setup/RecordingFields.h"

#include "reading/FieldReader.h"

#include <QDir>

namespace
{

decltype(ModuleSettings::family) readRecording(FieldReader &reader, const QJsonObject &object, const QString &place)
{
    using Settings = RecordingSettings;
    Settings settings;
    settings.file = reader.text(object, place, QStringLiteral("file"));
    settings.beside = reader.text(object, place, QStringLiteral("beside"), QString());
    settings.isPlaying = reader.boolean(object, place, QStringLiteral("playing"), settings.isPlaying);
    settings.isRepeated = reader.boolean(object, place, QStringLiteral("repeated"), settings.isRepeated);
    settings.speedTenths =
        int(reader.integer(object, place, QStringLiteral("speedTenths"), Settings::minimumSpeedTenths,
                           Settings::maximumSpeedTenths, settings.speedTenths));
    return settings;
}

QJsonObject writeRecording(const ModuleSettings &module)
{
    const auto *const settings = std::get_if<RecordingSettings>(&module.family);
    if (settings == nullptr) {
        return {};
    }
    return {
        {QStringLiteral("kind"), QStringLiteral("recording")}, {QStringLiteral("file"), settings->file},
        {QStringLiteral("beside"), settings->beside},          {QStringLiteral("playing"), settings->isPlaying},
        {QStringLiteral("repeated"), settings->isRepeated},    {QStringLiteral("speedTenths"), settings->speedTenths},
    };
}

} // namespace

ModuleFields recordingFields()
{
    return {{QStringLiteral("recording")},
            {QStringLiteral("file"), QStringLiteral("beside"), QStringLiteral("playing"), QStringLiteral("repeated"),
             QStringLiteral("speedTenths")},
            readRecording,
            writeRecording};
}

void resolveRecordings(QList<ModuleSettings> &modules, const QString &folder)
{
    for (ModuleSettings &module : modules) {
        if (auto *const recording = std::get_if<RecordingSettings>(&module.family)) {
            recording->file = QDir(folder).absoluteFilePath(recording->file);
        }
    }
}
