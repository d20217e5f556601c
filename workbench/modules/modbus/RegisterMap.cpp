#include "modules/modbus/RegisterMap.h"

#include <algorithm>

int RegisterMap::axisCount() const
{
    int count = 0;
    for (const Value &value : values) {
        count = value.group == Group::Axis ? std::max(count, value.axis + 1) : count;
    }
    return count;
}
