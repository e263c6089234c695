#include "platform/OwnPrograms.h"

#include <climits>
#include <unistd.h>

namespace tessaly::OwnPrograms {

std::string path(std::string_view name) {
  char own[PATH_MAX];
  const ssize_t length = ::readlink("/proc/self/exe", own, sizeof own);
  const std::string_view text(own, length > 0 ? static_cast<std::size_t>(length) : 0);
  const std::string folder(text.substr(0, text.rfind('/')));
  std::string beside = folder + "/" + std::string(name);
  if (::access(beside.c_str(), X_OK) == 0) return beside;
  return folder + "/../libexec/tessaly/" + std::string(name);
}

}  // namespace tessaly::OwnPrograms
