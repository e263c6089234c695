// A path as an open folder and a name in it, with the links above the name followed as the system
// does.
#pragma once

#include <cerrno>
#include <fcntl.h>
#include <string>

#include "platform/SystemError.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/Uninterrupted.h"

namespace tessaly {

struct NameInFolder {
  FileDescriptor folder;   // O_PATH
  std::string folderPath;  // ends in "/"
  std::string name;        // never empty, "." or ".."

  // For an absolute path, also with slashes at its end. EINVAL for a path without a name of its
  // own.
  static Result<NameInFolder> of(const std::string& path) {
    const std::size_t end = path.find_last_not_of('/') + 1;  // 0 if there is no character but
                                                             // slashes
    const std::size_t start = path.rfind('/', end == 0 ? 0 : end - 1) + 1;
    NameInFolder place;
    if (start < end) place.name = path.substr(start, end - start);
    if (!path.starts_with('/') || path.find('\0') != std::string::npos || place.name.empty() ||
        place.name == "." || place.name == "..") {
      return SystemError::fromErrno(EINVAL, path);
    }
    place.folderPath = path.substr(0, start);
    place.folder = FileDescriptor(uninterrupted(
        [&] { return ::open(place.folderPath.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC); }));
    if (!place.folder) return SystemError::fromErrno(errno, path);
    return place;
  }
};

}  // namespace tessaly
