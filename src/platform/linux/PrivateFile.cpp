#include "platform/linux/PrivateFile.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/PrivateName.h"
#include "platform/linux/Uninterrupted.h"
#include "platform/linux/UseLock.h"

namespace tessaly {

PrivateFile::PrivateFile(int folder, mode_t mode) : folder_(folder), isThere_(makeFile(mode)) {}

PrivateFile::~PrivateFile() {
  if (isThere_) ::unlinkat(folder_, name_.c_str(), 0);
}

// Skips a name left behind by a killed process with the same process number, and a file that
// another process is just clearing away.
bool PrivateFile::makeFile(mode_t mode) {
  constexpr int tries = 1000;
  for (int attempt = 0; attempt < tries; ++attempt) {
    name_ = PrivateName::ofFile();
    file_ = FileDescriptor(uninterrupted([&] {
      return ::openat(folder_, name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    }));
    if (!file_) {
      if (errno == EEXIST) continue;
      return false;
    }
    const UseLock::Taken taken = UseLock::take(file_);
    if (taken == UseLock::Taken::impossible) return true;
    if (taken == UseLock::Taken::heldByOther) continue;
    struct stat status {};
    if (::fstat(file_.get(), &status) != 0) {
      const int code = errno;
      ::unlinkat(folder_, name_.c_str(), 0);
      errno = code;
      return false;
    }
    if (status.st_nlink > 0) return true;
  }
  errno = EEXIST;
  return false;
}

bool PrivateFile::write(std::string_view content) {
  constexpr std::size_t mostAtOnce = std::size_t{1} << 30U;
  while (!content.empty()) {
    const std::size_t length = std::min(content.size(), mostAtOnce);
    const ssize_t written =
        uninterrupted([&] { return ::write(file_.get(), content.data(), length); });
    if (written <= 0) {
      if (written == 0) errno = EIO;
      return false;
    }
    content.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

bool PrivateFile::sync() {
  return uninterrupted([&] { return ::fsync(file_.get()); }) == 0;
}

bool PrivateFile::close() {
  // Without a free descriptor the rest is done without the lock.
  lock_ = FileDescriptor(::fcntl(file_.get(), F_DUPFD_CLOEXEC, 0));
  // An interrupted close() has closed the descriptor too.
  return file_.close() == 0 || errno == EINTR;
}

bool PrivateFile::moveTo(const std::string& name) {
  if (::renameat(folder_, name_.c_str(), folder_, name.c_str()) != 0) return false;
  isThere_ = false;
  return true;
}

}  // namespace tessaly
