#pragma once

class QColor;
class QImage;

/// What can be told apart, after the Web Content Accessibility Guidelines 2.1, "contrast ratio".
namespace Contrast
{

constexpr double minimumForIcons = 3.0;
constexpr double minimumForText = 4.5;

/// From 1 for equal colours to 21 for black and white, in any order; alpha is ignored.
double ratio(const QColor &one, const QColor &other);

/// The part of the pixels of \a icon that are not transparent that can be seen upon \a ground, 0 to 1; 1 of none.
double visiblePart(const QImage &icon, const QColor &ground);

} // namespace Contrast
