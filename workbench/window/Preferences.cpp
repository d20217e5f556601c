#include "window/Preferences.h"

#include "host/AppSettings.h"

namespace
{

QString paletteKey()
{
    return QStringLiteral("Workbench/Palette");
}

QString languageKey()
{
    return QStringLiteral("Workbench/Language");
}

} // namespace

PaletteChoice Preferences::palette()
{
    return paletteChoice(AppSettings().value(paletteKey()).toString()).value_or(PaletteChoice::System);
}

void Preferences::setPalette(PaletteChoice choice)
{
    AppSettings().setValue(paletteKey(), paletteName(choice));
}

QString Preferences::language()
{
    return AppSettings().value(languageKey()).toString();
}

void Preferences::setLanguage(const QString &code)
{
    AppSettings().setValue(languageKey(), code);
}
