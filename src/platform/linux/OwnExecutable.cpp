#include "platform/OwnExecutable.h"

#include <climits>
#include <string_view>
#include <sys/types.h>
#include <unistd.h>

namespace tessaly {

std::string ownExecutable() {
  char path[PATH_MAX];
  const ssize_t length = ::readlink("/proc/self/exe", path, sizeof path);
  if (length <= 0) return "";
  return executableFrom(std::string(path, static_cast<std::size_t>(length)));
}

std::string executableFrom(const std::string& told) {
  constexpr std::string_view removed = " (deleted)";
  if (!told.ends_with(removed) || ::access(told.c_str(), F_OK) == 0) return told;
  return told.substr(0, told.size() - removed.size());
}

}  // namespace tessaly
