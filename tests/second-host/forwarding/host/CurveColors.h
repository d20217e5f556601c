#pragma once

#include "secondhost/tools.h"

constexpr int curveColorCount = int(sizeof(colorForIds) / sizeof(colorForIds[0]));
