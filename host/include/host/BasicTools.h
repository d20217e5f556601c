#pragma once

#include "host/HostExport.h"

#include <QColor>
#include <QString>

class QAbstractButton;
class QWidget;

/// Small functions of the host that plugins share. GUI thread.
namespace BasicTools
{

/**
 * Rounds a linear axis to nice tick steps (1, 2 or 5 times a power of ten), in place.
 *
 * On return min <= max enclose the range passed in, both are whole multiples of the step (max - min) / ticks, and
 * ticks >= 1. The incoming \a ticks is the wanted number of intervals, clamped to 5 to 10: with fewer, a range that is
 * rounded at every change would end on an axis of one interval. A swapped range is put in order, an empty one is
 * widened; bounds are clamped to +-4e307, and NaN is replaced by the other bound, or by 0.
 */
HOST_EXPORT void adjustLinearAxis(double &min, double &max, unsigned int &ticks);

/**
 * \a value with \a decimals digits (0 to 15) behind the decimal mark, the digits of the integer part in groups, both as
 * the default QLocale has them, so that a number means the same wherever the application shows it.
 * NaN and infinite values give "nan", "inf" or "-inf"; a zero has no sign.
 */
HOST_EXPORT QString intInsertDot(double value, int decimals);

/**
 * Tints the button's icon: \a normal for the modes Normal and Active of QIcon, \a disabled and \a selected for the
 * modes of these names. The alpha of the icon is kept, and multiplied by that of the colour. An invalid colour leaves
 * its modes as they are; a null button or icon is ignored.
 */
HOST_EXPORT void setButtonIconsColor(QAbstractButton *button, QColor normal, QColor disabled, QColor selected);

/// \a prefix followed by \a value as upper-case hexadecimal digits, zero-padded to at least \a digits.
HOST_EXPORT QString iToHex(unsigned char value, int digits, QString prefix);

/**
 * Saves a picture of \a widget as PNG without asking and never over an existing file.
 *
 * The file goes to the folder in the setting "Pictures/Folder" (the user's picture folder when unset). Its name is
 * \a prefix, without what file names must not contain, with date and time.
 * \return the path of the file; on failure a sentence for the user that states the reason
 */
HOST_EXPORT QString ExportPNG(QWidget *widget, QString prefix);

} // namespace BasicTools
