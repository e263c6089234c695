#include "platform/ResolvedPath.h"

#include <filesystem>
#include <system_error>

namespace tessaly {

std::string resolvedPath(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code error;
  fs::path resolved = fs::weakly_canonical(path.empty() ? fs::path(".") : fs::path(path), error);
  if (error) {
    // For a loop of links, or a path longer than the system accepts in one call.
    resolved = fs::path(path);
    if (resolved.is_relative()) resolved = fs::current_path(error) / resolved;
    resolved = resolved.lexically_normal();
  }
  std::string text = resolved.string();
  while (text.size() > 1 && text.ends_with('/')) text.pop_back();
  return text;
}

std::string resolvedAbove(const std::string& path) {
  // The system would cut the path at a NUL.
  if (!path.starts_with('/') || path.find('\0') != std::string::npos) return path;
  const std::size_t end = path.find_last_not_of('/');
  if (end == std::string::npos) return path;
  const std::size_t slash = path.rfind('/', end);
  const std::string name = path.substr(slash + 1, end - slash);
  if (name == "." || name == "..") return path;
  const std::string above = resolvedPath(path.substr(0, slash + 1));
  return above == "/" ? above + name : above + "/" + name;
}

}  // namespace tessaly
