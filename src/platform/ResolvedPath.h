// Absolute paths with all symbolic links resolved. Safe from any thread.
#pragma once

#include <string>

namespace tessaly {

// `path` made absolute, with "." and "..", doubled and trailing slashes and symbolic links
// resolved. Where the path, or the end of it, does not exist, that part is kept as it is written.
std::string resolvedPath(const std::string& path);

}  // namespace tessaly
