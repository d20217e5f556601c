#pragma once

#include "setup/Scene.h"

#include <QStringList>

class QWidget;

/// The choices of a container, and what of them cannot be kept.
struct ChosenScene
{
    SceneContainer choices; ///< without plugin and place
    QStringList losses;     ///< one line for each source that is shown but not among the choices, and why
};

/**
 * Reads from the widgets of \a container what a person sees chosen there: the counterpart of SceneRunner. A container
 * that is no plot window, or was not yet opened, has no curves.
 *
 * All curves share one module per side. Where the pages of the curves show different ones, that of the selected curve
 * counts, and the sources from others are left out.
 */
ChosenScene readChoices(const QWidget *container);
