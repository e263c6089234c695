#include "platform/ProgramSearch.h"

#include <sys/stat.h>
#include <unistd.h>

namespace tessaly::ProgramSearch {

namespace {

constexpr std::string_view everySystem = "/usr/local/bin:/usr/bin:/bin";

bool mayBeRun(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
         access(path.c_str(), X_OK) == 0;
}

}  // namespace

std::optional<std::string> find(std::string_view name, std::string_view searchPath) {
  if (name.find('/') != std::string_view::npos) {
    std::string path(name);
    if (!name.starts_with('/') || !mayBeRun(path)) return std::nullopt;
    return path;
  }
  if (name.empty()) return std::nullopt;
  std::string_view rest = searchPath.empty() ? everySystem : searchPath;
  while (true) {
    const auto colon = rest.find(':');
    const std::string_view folder = rest.substr(0, colon);
    if (folder.starts_with('/')) {
      std::string path = std::string(folder) + "/" + std::string(name);
      if (mayBeRun(path)) return path;
    }
    if (colon == std::string_view::npos) return std::nullopt;
    rest.remove_prefix(colon + 1);
  }
}

}  // namespace tessaly::ProgramSearch
