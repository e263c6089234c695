#include "platform/FileAccess.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <dirent.h>
#include <fcntl.h>
#include <limits>
#include <memory>
#include <string_view>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/AllocatedBytes.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/OpenPath.h"
#include "platform/linux/Uninterrupted.h"

namespace tessaly {

namespace {

// Does not make the file a controlling terminal, and does not wait for a writer.
FileDescriptor openToRead(const std::string& path) {
  return FileDescriptor(uninterrupted(
      [&] { return ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY); }));
}

bool canMap(int file, std::int64_t length) {
  if (length <= 0 || static_cast<std::uint64_t>(length) > std::numeric_limits<std::size_t>::max())
    return false;
  const auto size = static_cast<std::size_t>(length);
  void* const content = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
  if (content == MAP_FAILED) return false;
  ::munmap(content, size);
  return true;
}

bool canReadToTheEnd(int file) {
  std::array<char, 65536> block{};
  while (true) {
    const ssize_t count = uninterrupted([&] { return ::read(file, block.data(), block.size()); });
    if (count <= 0) return count == 0;
  }
}

// Of the item itself if it is a link.
bool examine(const std::string& path, struct stat& status) {
  // The system would cut the path at the NUL, and so examine another item.
  if (!path.starts_with('/') || path.find('\0') != std::string::npos) return false;
  const FileDescriptor item = openPath(path, O_PATH | O_NOFOLLOW);
  return item && ::fstat(item.get(), &status) == 0;
}

class MachineFiles final : public FileAccess {
 public:
  Kind kindOf(const std::string& path) const override {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return Kind::nothing;
    return S_ISDIR(status.st_mode) ? Kind::directory : Kind::file;
  }

  bool canList(const std::string& path) const override {
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(::opendir(path.c_str()), ::closedir);
    if (!folder) return false;
    while (true) {
      errno = 0;
      if (::readdir(folder.get()) == nullptr) return errno == 0;
    }
  }

  bool hasEntries(const std::string& path) const override {
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(::opendir(path.c_str()), ::closedir);
    if (!folder) return false;
    while (const dirent* const entry = ::readdir(folder.get())) {
      const std::string_view name = entry->d_name;
      if (name != "." && name != "..") return true;
    }
    return false;
  }

  Values valuesOf(const std::string& path) const override {
    struct stat status {};
    if (!examine(path, status)) return {};
    constexpr double nanosecond = 1e9;
    return {.modified = static_cast<double>(status.st_mtim.tv_sec) +
                        static_cast<double>(status.st_mtim.tv_nsec) / nanosecond,
            .allocated = bytesOfBlocks(static_cast<std::uint64_t>(status.st_blocks)),
            .size = status.st_size};
  }

  bool canOpen(const std::string& path) const override {
    return static_cast<bool>(openToRead(path));
  }

  bool canReadWhole(const std::string& path) const override {
    const FileDescriptor file = openToRead(path);
    struct stat status {};
    if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
    return canMap(file.get(), status.st_size) || canReadToTheEnd(file.get());
  }
};

}  // namespace

const FileAccess& FileAccess::ofMachine() {
  static const MachineFiles files;
  return files;
}

}  // namespace tessaly
