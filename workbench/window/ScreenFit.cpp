#include "window/ScreenFit.h"

namespace
{

// Widget pixels.
constexpr QSize wanted(1440, 860);
constexpr QSize frame(16,
                      48); // of an ordinary desktop, with its title: that of a window is not known before it is shown
constexpr int minimumWidthForModules = 1060;
constexpr int minimumHeightForMessages = 640;

} // namespace

ScreenFit::ScreenFit(const QSize &available)
    : size(wanted.boundedTo(available - frame))
    , showsModules(available.width() >= minimumWidthForModules)
    , showsMessages(available.height() >= minimumHeightForMessages)
{
}
