// Iteration over the folders above a path.
#pragma once

#include <cstddef>
#include <string_view>

namespace tessaly {

// Calls `visit` with `path` and all folders above it, the nearest first, until it returns false.
// The path has no slash at its end; "/" comes last if the path is absolute.
template <class Visit>
void forEachUpwards(std::string_view path, const Visit& visit) {
  for (std::size_t end = path.size(); end != std::string_view::npos && end > 0;
       end = path.rfind('/', end - 1)) {
    if (!visit(path.substr(0, end))) return;
  }
  if (path.size() > 1 && path.starts_with('/')) visit(std::string_view("/"));
}

}  // namespace tessaly
