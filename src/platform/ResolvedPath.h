// Absolute paths with all symbolic links resolved. Safe from any thread.
#pragma once

#include <string>

namespace tessaly {

// `path` made absolute, with "." and "..", doubled and trailing slashes and symbolic links
// resolved. A part at the end that does not exist is kept as written.
std::string resolvedPath(const std::string& path);

// Resolves only the folders above the item at the absolute `path`; its own name, which may be a
// link, is kept. A path that ends in no name (such as "/x/.."), or is not absolute, is returned
// unchanged.
std::string resolvedAbove(const std::string& path);

}  // namespace tessaly
