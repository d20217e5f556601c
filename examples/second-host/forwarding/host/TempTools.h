#pragma once

#include "secondhost/register_list.hpp"

namespace HostAccess {
inline QList<Register*> currentRegisters(TempTools& tools) {
  return tools.found().toList();
}
}  // namespace HostAccess
