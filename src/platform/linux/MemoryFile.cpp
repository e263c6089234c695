#include "platform/MemoryFile.h"

#include <cerrno>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "platform/linux/Uninterrupted.h"

namespace tessaly {

Result<MemoryFile> MemoryFile::made() {
  const int descriptor = ::memfd_create("tessaly", MFD_CLOEXEC);
  if (descriptor < 0) return SystemError::fromErrno(errno, "memory");
  return MemoryFile(descriptor);
}

MemoryFile::MemoryFile(MemoryFile&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)) {}

MemoryFile& MemoryFile::operator=(MemoryFile&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  return *this;
}

MemoryFile::~MemoryFile() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

std::string MemoryFile::path() const {
  return "/proc/" + std::to_string(::getpid()) + "/fd/" + std::to_string(descriptor_);
}

std::int64_t MemoryFile::size() const {
  struct stat status {};
  return ::fstat(descriptor_, &status) == 0 ? status.st_size : 0;
}

bool MemoryFile::read(std::int64_t offset, void* to, std::size_t count) const {
  for (std::size_t done = 0; done < count;) {
    const ssize_t length = uninterrupted([&] {
      return ::pread(descriptor_, static_cast<char*>(to) + done, count - done,
                     offset + static_cast<std::int64_t>(done));
    });
    if (length <= 0) return false;
    done += static_cast<std::size_t>(length);
  }
  return true;
}

}  // namespace tessaly
