// Questions about paths, in contrast to a scanned tree.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tessaly::ProInsights {

// Whether `path` is one of `prefixes` or lies below one. A prefix may end in a slash; an empty one
// matches nothing. Compares bytes. Pure, safe from any thread.
bool isExcluded(std::string_view path, const std::vector<std::string>& prefixes);

}  // namespace tessaly::ProInsights
