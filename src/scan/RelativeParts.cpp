#include "scan/RelativeParts.h"

#include <algorithm>
#include <string_view>

#include "platform/ResolvedPath.h"

namespace tessaly::DiskScanner {

std::optional<std::vector<std::string>> relativeParts(const std::string& root,
                                                      const std::string& path) {
  const std::string base = resolvedPath(root);
  const std::string target = resolvedPath(path);
  if (base == target) return std::vector<std::string>();
  const std::string prefix = base == "/" ? base : base + "/";
  if (!target.starts_with(prefix)) return std::nullopt;

  std::vector<std::string> parts;
  for (std::string_view rest = std::string_view(target).substr(prefix.size()); !rest.empty();) {
    const std::size_t end = std::min(rest.find('/'), rest.size());
    if (end > 0) parts.emplace_back(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return parts;
}

}  // namespace tessaly::DiskScanner
