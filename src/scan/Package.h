// Packages: directories that stand for one thing, and are shown as one.
#pragma once

#include <string_view>

namespace tessaly {

// Whether an item of this name is treated as a package: an application bundle, a photo library or a
// sparse bundle, in any case.
bool isPackageName(std::string_view name);

// Whether the name is that of an application bundle, in any case.
bool isAppName(std::string_view name);

}  // namespace tessaly
