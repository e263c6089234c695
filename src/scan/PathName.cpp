#include "scan/PathName.h"

#include <cstddef>

namespace tessaly {

std::string_view lastPathComponent(std::string_view path) {
  const std::size_t last = path.find_last_not_of('/');
  if (last == std::string_view::npos) return path.substr(0, 1);
  path = path.substr(0, last + 1);
  return path.substr(path.rfind('/') + 1);
}

}  // namespace tessaly
