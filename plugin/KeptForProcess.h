#pragma once

#include <utility>
#include <vector>

/**
 * Objects that are never deleted on purpose: records that a command channel may still write to, and the files of
 * recordings. As long as the plugin's file is loaded all of them are reachable from one list, so that leak checkers do
 * not report them. GUI thread.
 */
namespace KeptForProcess
{

/// All kept objects. The list itself is never destroyed, so that it outlives all static objects.
std::vector<const void *> &objects();

template<typename Object, typename... Arguments> Object *make(Arguments &&...arguments)
{
    auto *const object = new Object(std::forward<Arguments>(arguments)...);
    objects().push_back(object);
    return object;
}

} // namespace KeptForProcess
