#include "KeptForProcess.h"

std::vector<const void *> &KeptForProcess::objects()
{
    static auto *const kept = new std::vector<const void *>;
    return *kept;
}
