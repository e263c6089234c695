// The file URI of a path. Pure, safe from any thread.
#pragma once

#include <string>
#include <string_view>

namespace tessaly {

// "file://" and the path, every byte percent-encoded that may not stand in the path of a URI as it
// is. A path that is not UTF-8 keeps its bytes this way. `path` is absolute.
std::string fileUri(std::string_view path);

}  // namespace tessaly
