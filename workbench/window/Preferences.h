#pragma once

#include "window/Palettes.h"

#include <QString>

/// What a person has chosen for all runs, in the settings.
namespace Preferences
{

/// System, unless another one was chosen.
PaletteChoice palette();
void setPalette(PaletteChoice choice);

/// Code of the language; empty for that of the system.
QString language();
void setLanguage(const QString &code);

} // namespace Preferences
