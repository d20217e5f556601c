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
 * ticks >= 1. The incoming \a ticks is the wanted number of intervals; it is kept within 5 to 10, for with fewer a
 * range that is rounded again and again would end on an axis of one interval. A swapped range is put in order, an empty one is
 * widened, a non-finite or too large bound is replaced by a finite one.
 */
HOST_EXPORT void adjustLinearAxis(double &min, double &max, unsigned int &ticks);

/**
 * \a value with \a decimals digits (0 to 15) after a ",", the digits of the integer part grouped by three with ".".
 * A value that is not finite gives "nan", "inf" or "-inf"; a zero never has a sign.
 */
HOST_EXPORT QString intInsertDot(double value, int decimals);

/**
 * Tints the button's icon: \a normal for the enabled states, \a disabled and \a selected for theirs; the shape (alpha)
 * of the icon is kept, and multiplied by the colour's own alpha. An invalid colour leaves the states it stands for as they are.
 */
HOST_EXPORT void setButtonIconsColor(QAbstractButton *button, QColor normal, QColor disabled, QColor selected);

/// \a prefix followed by \a value as upper-case hexadecimal digits, zero-padded to at least \a digits.
HOST_EXPORT QString iToHex(unsigned char value, int digits, QString prefix);

/**
 * Saves a picture of \a widget as PNG without asking and never over an existing file.
 *
 * The file goes to the folder under the settings key "Pictures/Folder" (the user's picture folder when unset), named
 * by \a prefix, date and time.
 * \return the path of the file, or a sentence that says why there is none
 */
HOST_EXPORT QString ExportPNG(QWidget *widget, QString prefix);

} // namespace BasicTools
