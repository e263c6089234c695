// What a path is called. Paths are bytes. Pure, safe from any thread.
#pragma once

#include <string_view>

namespace tessaly {

// The last component of `path`, as the name of a file or folder: slashes at the end do not count,
// the root of the disk is "/", and a path without any slash is its own name. Empty for an empty
// path alone. "." and ".." are components like any other. The view points into `path`.
std::string_view lastPathComponent(std::string_view path);

}  // namespace tessaly
