#pragma once

#include "host/HostExport.h"

#include <QColor>

constexpr int curveColorCount = 6;

/// The curve colours, indexed by curve id modulo curveColorCount. The first four are translucent.
HOST_EXPORT extern const QColor colorForIds[curveColorCount];
