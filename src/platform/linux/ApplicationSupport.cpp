#include "platform/ApplicationSupport.h"

#include <cerrno>
#include <cstdlib>
#include <sys/stat.h>

#include "platform/HomeDirectory.h"

namespace tessaly {

namespace {

// A folder, or a link to one.
bool isFolder(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

std::string applicationSupportDirectory() {
  return baseDirectoryFrom(std::getenv("XDG_DATA_HOME"), homeDirectory(), ".local/share");
}

std::string settingsDirectory() {
  return baseDirectoryFrom(std::getenv("XDG_CONFIG_HOME"), homeDirectory(), ".config");
}

std::string baseDirectoryFrom(const char* variable, const std::string& home,
                              const std::string& usual) {
  std::string folder = variable != nullptr ? variable : "";
  if (!folder.starts_with('/')) folder = home + (home.ends_with('/') ? "" : "/") + usual;
  while (folder.size() > 1 && folder.ends_with('/')) folder.pop_back();
  return folder;
}

Outcome makeFolders(const std::string& path) {
  if (isFolder(path)) return succeeded();
  // From the top down. EEXIST is no error: another process may create the same folder at this
  // moment.
  for (std::size_t end = 0; end != std::string::npos;) {
    end = path.find('/', end + 1);
    const std::string folder = path.substr(0, end);
    if (::mkdir(folder.c_str(), 0700) == 0) continue;
    const int code = errno;
    if (!isFolder(folder)) return SystemError::fromErrno(code == EEXIST ? ENOTDIR : code, folder);
  }
  return succeeded();
}

}  // namespace tessaly
