#pragma once

#include <QString>

/**
 * The time between two samples as the rate label shows it.
 *
 * Up to 10 ms in microseconds, in steps of 100, in a field of 5 characters; above in whole milliseconds, in a field of
 * 4. Halves are rounded up.
 *
 * \param elapsedNs elapsed time, ns, more than 0
 */
QString elapsedText(qint64 elapsedNs);
