#include "scan/ProInsights.h"

#include <algorithm>

namespace tessaly::ProInsights {

bool isExcluded(std::string_view path, const std::vector<std::string>& prefixes) {
  return std::ranges::any_of(prefixes, [path](std::string_view prefix) {
    if (prefix.empty()) return false;
    if (prefix.ends_with('/')) prefix.remove_suffix(1);
    return path.starts_with(prefix) && (path.size() == prefix.size() || path[prefix.size()] == '/');
  });
}

}  // namespace tessaly::ProInsights
