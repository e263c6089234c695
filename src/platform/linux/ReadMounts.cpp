#include "platform/linux/ReadMounts.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <unistd.h>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/Uninterrupted.h"

namespace tessaly {

Result<std::vector<Mount>> readMounts(const std::string& path) {
  const FileDescriptor file(
      uninterrupted([&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC); }));
  // The file reports no length.
  std::string content;
  std::array<char, 16384> part{};
  while (file) {
    const ssize_t count =
        uninterrupted([&] { return ::read(file.get(), part.data(), part.size()); });
    if (count == 0) return mountsIn(content);
    if (count < 0) break;
    content.append(part.data(), static_cast<std::size_t>(count));
  }
  return SystemError::fromErrno(errno, path);
}

}  // namespace tessaly
