#include "platform/linux/trash/NewInfo.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "platform/linux/Uninterrupted.h"
#include "platform/linux/trash/ItemLocation.h"

namespace tessaly {

namespace {

bool writeAll(const FileDescriptor& file, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written =
        uninterrupted([&] { return ::write(file.get(), content.data(), content.size()); });
    if (written <= 0) {
      if (written == 0) errno = EIO;
      return false;
    }
    content.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

}  // namespace

NewInfo::NewInfo(const FileDescriptor& folder, std::string name, std::string_view content)
    : folder_(folder), name_(std::move(name)) {
  isThere_ = create(content);
  if (isThere_ || (errno != ENOSPC && errno != EDQUOT)) return;
  const int code = errno;
  reserved_.emplace(folder_, name_, content);
  isThere_ = static_cast<bool>(*reserved_);
  if (!isThere_ && errno != EEXIST) errno = code;
}

NewInfo::~NewInfo() {
  if (isThere_) remove();
}

void NewInfo::keep() {
  if (isThere_ && reserved_) reserved_->keep();
  isThere_ = false;
}

bool NewInfo::create(std::string_view content) {
  FileDescriptor file(uninterrupted([&] {
    const int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    return ::openat(folder_.get(), name_.c_str(), flags, 0600);
  }));
  if (!file) return false;
  held_ = FileDescriptor(::fcntl(file.get(), F_DUPFD_CLOEXEC, 0));
  // An interrupted close() has closed the descriptor too.
  const bool isWritten = held_ && writeAll(file, content) &&
                         uninterrupted([&] { return ::fsync(file.get()); }) == 0 &&
                         (file.close() == 0 || errno == EINTR);
  if (isWritten) {
    syncFolder(folder_);
  } else {
    remove();
  }
  return isWritten;
}

void NewInfo::remove() {
  const int code = errno;
  if (reserved_) {
    reserved_->giveBack();
  } else if (hasItsName()) {
    ::unlinkat(folder_.get(), name_.c_str(), 0);
  }
  errno = code;
  isThere_ = false;
}

// Another program may have removed the record as a leftover, and stored one of its own.
bool NewInfo::hasItsName() const {
  // It was created just now.
  if (!held_) return true;
  struct stat own {};
  struct stat there {};
  return ::fstat(held_.get(), &own) == 0 &&
         ::fstatat(folder_.get(), name_.c_str(), &there, AT_SYMLINK_NOFOLLOW) == 0 &&
         own.st_dev == there.st_dev && own.st_ino == there.st_ino;
}

}  // namespace tessaly
