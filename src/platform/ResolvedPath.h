// Absolute paths with all symbolic links resolved. Safe from any thread.
#pragma once

#include <string>

namespace tessaly {

// `path` made absolute, with "." and "..", doubled and trailing slashes and symbolic links
// resolved. Where the path, or the end of it, does not exist, that part is kept as it is written.
std::string resolvedPath(const std::string& path);

// The same for the folders above the item at the absolute `path`, which itself may be a link: its
// name stays as it is written. A path that names no item of its own (such as "/x/..") stays as it
// is, and so does one that is not absolute.
std::string resolvedAbove(const std::string& path);

}  // namespace tessaly
