#include "platform/linux/walk/OpenDirectory.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <unistd.h>

#include "platform/linux/Uninterrupted.h"

namespace tessaly::walk {

namespace {

int openAt(int directory, const std::string& path, int flags) {
  return uninterrupted(
      [&] { return openat(directory, path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | flags); });
}

}  // namespace

int openDirectory(const std::string& path, int flags) {
  constexpr std::size_t longest = PATH_MAX - 1;
  if (path.size() <= longest) return openAt(AT_FDCWD, path, flags);

  // The kernel accepts no longer path in one call, so it is opened in parts that end before a "/".
  int directory = AT_FDCWD;
  for (std::size_t at = 0; at < path.size();) {
    std::size_t end = path.size();
    if (end - at > longest) {
      end = path.rfind('/', at + longest);
      if (end == std::string::npos || end <= at) {
        if (directory != AT_FDCWD) close(directory);
        errno = ENAMETOOLONG;
        return -1;
      }
    }
    const int next = openAt(directory, path.substr(at, end - at), flags);
    const int error = errno;
    if (directory != AT_FDCWD) close(directory);
    if (next < 0) {
      errno = error;
      return -1;
    }
    directory = next;
    for (at = end; at < path.size() && path[at] == '/';) ++at;
  }
  return directory;
}

}  // namespace tessaly::walk
