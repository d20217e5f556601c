#pragma once

#include "host/HostExport.h"

#include <QColor>

constexpr int curveColorCount = 6;

/// The colours of the curves; curve \a id has colour id modulo curveColorCount. The first four are translucent.
HOST_EXPORT extern const QColor colorForIds[curveColorCount];
