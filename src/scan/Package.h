// Packages: directories that are shown as a single item.
#pragma once

#include <string_view>

namespace tessaly {

// Whether the name is that of a package: an application bundle, a photo library or a sparse bundle,
// in any case.
bool isPackageName(std::string_view name);

// Whether the name is that of an application bundle, in any case.
bool isAppName(std::string_view name);

}  // namespace tessaly
