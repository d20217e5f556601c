#pragma once

#include <QSize>

/// How the main window begins on a screen: as large as it is meant to be, or as the screen allows.
struct ScreenFit
{
    /// \param available the screen's size without bars of the desktop, pixels as widgets count them
    explicit ScreenFit(const QSize &available);

    QSize size;                ///< of the window, without the frame that the desktop adds
    bool showsModules = true;  ///< beside the workspace; else the width is for the plots
    bool showsMessages = true; ///< and the other panels below the workspace; else the height is for the plots
};
