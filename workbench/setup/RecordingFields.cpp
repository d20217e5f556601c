#include "setup/RecordingFields.h"

#include "reading/FieldReader.h"

#include <QCoreApplication>

#include <cmath>

namespace
{

constexpr double tenths = 10.0;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(RecordingFields)
};

decltype(ModuleSettings::family) read(FieldReader &reader, const QJsonObject &object, const QString &place)
{
    using Settings = RecordingSettings;
    Settings settings;
    settings.file = reader.text(object, place, QStringLiteral("file"));
    settings.beside = reader.text(object, place, QStringLiteral("beside"), QString());
    settings.isPlaying = reader.boolean(object, place, QStringLiteral("playing"), settings.isPlaying);
    settings.isRepeated = reader.boolean(object, place, QStringLiteral("repeated"), settings.isRepeated);
    const double speed = reader.number(object, place, QStringLiteral("speed"), settings.speedTenths / tenths) * tenths;
    const double rounded = std::round(speed);
    if (rounded < Settings::minimumSpeedTenths || rounded > Settings::maximumSpeedTenths ||
        std::abs(speed - rounded) > 1e-6) {
        reader.addError(place, QStringLiteral("speed"), Text::tr("a number from 0.1 to 100, with one decimal"));
    } else {
        settings.speedTenths = static_cast<int>(rounded);
    }
    return settings;
}

QJsonObject write(const ModuleSettings &module)
{
    const auto *const settings = std::get_if<RecordingSettings>(&module.family);
    if (settings == nullptr) {
        return {};
    }
    return {
        {QStringLiteral("kind"), QStringLiteral("recording")},
        {QStringLiteral("file"), settings->file},
        {QStringLiteral("beside"), settings->beside},
        {QStringLiteral("playing"), settings->isPlaying},
        {QStringLiteral("repeated"), settings->isRepeated},
        {QStringLiteral("speed"), settings->speedTenths / tenths},
    };
}

} // namespace

ModuleFields recordingFields()
{
    return {{QStringLiteral("recording")},
            {QStringLiteral("file"), QStringLiteral("beside"), QStringLiteral("playing"), QStringLiteral("repeated"),
             QStringLiteral("speed")},
            read,
            write};
}
