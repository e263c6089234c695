// Opens a path of any length.
#pragma once

#include <cerrno>
#include <climits>
#include <cstddef>
#include <fcntl.h>
#include <string>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/Uninterrupted.h"

namespace tessaly {

// Opens the absolute `path` with `flags`; links above the item are followed. Returns an empty
// descriptor after a failure, with errno set. The kernel accepts no path longer than PATH_MAX in
// one call, so a longer one is opened in parts that end before a "/".
inline FileDescriptor openPath(const std::string& path, int flags) {
  const auto openAt = [](int folder, const std::string& name, int how) {
    return FileDescriptor(
        uninterrupted([&] { return ::openat(folder, name.c_str(), how | O_CLOEXEC); }));
  };
  constexpr std::size_t longest = PATH_MAX - 1;
  FileDescriptor folder(AT_FDCWD);
  std::size_t at = 0;
  while (path.size() - at > longest) {
    const std::size_t end = path.rfind('/', at + longest);
    if (end == std::string::npos || end <= at) {
      errno = ENAMETOOLONG;
      return FileDescriptor();
    }
    folder = openAt(folder.get(), path.substr(at, end - at), O_PATH | O_DIRECTORY);
    if (!folder) return folder;
    at = path.find_first_not_of('/', end);
    if (at == std::string::npos) return openAt(folder.get(), ".", flags);
  }
  return openAt(folder.get(), path.substr(at), flags);
}

}  // namespace tessaly
