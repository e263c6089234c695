#include "platform/ResolvedPath.h"

#include <filesystem>
#include <system_error>

namespace tessaly {

std::string resolvedPath(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code error;
  fs::path resolved = fs::weakly_canonical(path.empty() ? fs::path(".") : fs::path(path), error);
  if (error) {
    // A link that leads nowhere sane, or a path longer than the system takes at once.
    resolved = fs::path(path);
    if (resolved.is_relative()) resolved = fs::current_path(error) / resolved;
    resolved = resolved.lexically_normal();
  }
  std::string text = resolved.string();
  while (text.size() > 1 && text.ends_with('/')) text.pop_back();
  return text;
}

}  // namespace tessaly
