#include "window/Contrast.h"

#include <QColor>
#include <QImage>

#include <cmath>
#include <utility>

namespace
{

double linear(double channel)
{
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// \a color as it looks upon \a ground.
QColor blended(const QColor &color, const QColor &ground)
{
    const auto mix = [alpha = color.alphaF()](double over, double below) { return alpha * over + (1 - alpha) * below; };
    return QColor::fromRgbF(mix(color.redF(), ground.redF()), mix(color.greenF(), ground.greenF()),
                            mix(color.blueF(), ground.blueF()));
}

} // namespace

double Contrast::ratio(const QColor &one, const QColor &other)
{
    double lighter = luminance(one);
    double darker = luminance(other);
    if (lighter < darker) {
        std::swap(lighter, darker);
    }
    return (lighter + 0.05) / (darker + 0.05);
}

double Contrast::visiblePart(const QImage &icon, const QColor &ground)
{
    constexpr double edge = 0.5; // what is fainter is the edge of a shape
    int drawn = 0;
    int visible = 0;
    for (int y = 0; y < icon.height(); ++y) {
        for (int x = 0; x < icon.width(); ++x) {
            const QColor color = icon.pixelColor(x, y);
            if (color.alphaF() >= edge) {
                ++drawn;
                visible += ratio(blended(color, ground), ground) >= minimumForIcons ? 1 : 0;
            }
        }
    }
    return drawn == 0 ? 1.0 : double(visible) / double(drawn);
}
