// Which paths a person is warned about before they go to the Trash, and the words for it. A
// warning, no wall: nothing here keeps anything from being moved.
//
// Paths are compared as text, once runs of slashes are one and a slash at the end is gone: links
// are not resolved, "." and ".." mean nothing, and case counts. Pure, safe from any thread.
#pragma once

#include <string>
#include <string_view>

#include "platform/Places.h"

namespace tessaly::CriticalPaths {

// Whether the user whose home directory is `home` should think twice about `path`.
bool isCritical(std::string_view path, std::string_view home,
                const Places& places = Places::current());

// The first line of the warning about a path that is critical.
std::string reason(std::string_view path, std::string_view home);

}  // namespace tessaly::CriticalPaths
