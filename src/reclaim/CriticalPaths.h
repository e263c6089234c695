// Decides which paths need a warning before they go to the Trash, and words it. Only a warning:
// nothing here prevents a move.
//
// Paths are compared as text, with runs of slashes merged and a final slash removed: links are not
// resolved, "." and ".." have no special meaning, and case counts. Pure, safe from any thread.
#pragma once

#include <string>
#include <string_view>

#include "look/Wording.h"
#include "platform/Places.h"

namespace tessaly::CriticalPaths {

// Whether `path` needs a warning for the user with the home directory `home`.
bool isCritical(std::string_view path, std::string_view home,
                const Places& places = Places::current());

// The first line of the warning about a critical path.
std::string reason(std::string_view path, std::string_view home,
                   const Wording& words = Wording::current());

}  // namespace tessaly::CriticalPaths
