// The file URI of a path. Pure, safe from any thread.
#pragma once

#include <string>
#include <string_view>

namespace tessaly {

// "file://" and the path, with every byte percent-encoded that may not be in the path of a URI. So
// a path that is not UTF-8 keeps its bytes. `path` must be absolute.
std::string fileUri(std::string_view path);

}  // namespace tessaly
