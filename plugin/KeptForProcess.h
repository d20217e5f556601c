#pragma once

#include <utility>
#include <vector>

/**
 * What is made once and lives as long as the process, on purpose: records that a command channel may still write to, and
 * files of recordings. All of it is reachable from one list while the plugin's file is loaded, so that it is no leak.
 * GUI thread.
 */
namespace KeptForProcess
{

/// Everything that is kept. The list is never destroyed: it has to outlive all static objects.
std::vector<const void *> &objects();

template<typename Object, typename... Arguments> Object *make(Arguments &&...arguments)
{
    auto *const object = new Object(std::forward<Arguments>(arguments)...);
    objects().push_back(object);
    return object;
}

} // namespace KeptForProcess
