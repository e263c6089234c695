// The name of the item at a path. Paths are bytes. Pure, safe from any thread.
#pragma once

#include <string_view>

namespace tessaly {

// The last component of `path`: slashes at the end do not count, the root directory gives "/", a
// path without any slash is its own name, and only an empty path gives "". "." and ".." are
// components like any other. The view points into `path`.
std::string_view lastPathComponent(std::string_view path);

}  // namespace tessaly
