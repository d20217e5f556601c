#include "host/CurveColors.h"

// Four translucent colours, so that curves show through where they cross, and two opaque ones in reserve.
const QColor colorForIds[curveColorCount] = {
    QColor(220, 20, 60, 195), QColor(255, 215, 0, 195), QColor(20, 150, 255, 195),
    QColor(50, 205, 50, 195), QColor(Qt::cyan),         QColor(Qt::magenta),
};
