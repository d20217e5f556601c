#pragma once

#include <QString>

/**
 * The text of the rate label: the time between two samples.
 *
 * Up to 10 ms: microseconds, rounded to 100, right-aligned in 5 characters. Above: milliseconds, rounded, right-aligned
 * in 4 characters. Halves are rounded up.
 *
 * \param elapsedNs elapsed time, ns, more than 0
 */
QString elapsedText(qint64 elapsedNs);
