#pragma once

#include "Timing.h"

/// Each returns the Markdown text of one chapter.
namespace Reports
{

/// All contestants on all kinds of curves; \a all takes one curve besides four, and larger windows.
QString comparison(const Effort &effort, bool all);

/// Where the time of one redraw goes.
QString shares(const Effort &effort);

/**
 * What a user loses by the plot: the plugin samples in a real event loop.
 *
 * \param all        all sizes, kinds of curves, with log and without, each for a longer time
 * \param beforeFile what an earlier version's \a saveFile holds, to be shown beside; may be missing
 * \param saveFile   where to keep what was measured; empty: nowhere
 */
QString samples(bool all, const QString &beforeFile, const QString &saveFile);

/// The plugin in its window: its two ticks, the log line, the first opening.
QString plugin(const Effort &effort);

/// How a redraw grows with points, curves and window; draws the picture \a pictureFile by the product itself.
QString growth(const Effort &effort, const QString &pictureFile);

} // namespace Reports
