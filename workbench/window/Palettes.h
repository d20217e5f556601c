#pragma once

#include <QString>

#include <optional>

/// The colours of the program's windows.
enum class PaletteChoice
{
    System, ///< style and colours of the desktop
    Light,  ///< Fusion, dark on light
    Dark    ///< Fusion, light on dark
};

/// The choice named "system", "light" or "dark"; none for any other text.
std::optional<PaletteChoice> paletteChoice(const QString &name);

/// The name that paletteChoice() takes.
QString paletteName(PaletteChoice choice);

/// Sets style and palette of the whole application, also of windows that are there; needs the application object.
void applyPalette(PaletteChoice choice);

/// The choice that was applied last; System before.
PaletteChoice currentPalette();
