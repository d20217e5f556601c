#pragma once

#include "Timing.h"

/// Each returns the Markdown text of one chapter.
namespace Reports
{

/// All contestants on all kinds of curves; \a all takes one curve besides four.
QString comparison(const Effort &effort, bool all);

/// Where the time of one redraw goes.
QString shares(const Effort &effort);

/// The plugin in its window: its two ticks, the log line, the first opening.
QString plugin(const Effort &effort);

/// How a redraw grows with points, curves and window; draws the picture \a pictureFile by the product itself.
QString growth(const Effort &effort, const QString &pictureFile);

} // namespace Reports
