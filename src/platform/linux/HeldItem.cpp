#include "platform/HeldItem.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/types.h>
#include <unistd.h>
#include <utility>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/OpenPath.h"
#include "platform/linux/Uninterrupted.h"

namespace tessaly {

namespace {

FileDescriptor openAt(int folder, const std::string& name, int flags) {
  return FileDescriptor(
      uninterrupted([&] { return ::openat(folder, name.c_str(), flags | O_CLOEXEC); }));
}

// Attributes of the item itself, even if it is a link, without opening it.
Result<struct statx> statusOf(const FileDescriptor& item, const std::string& path) {
  struct statx status {};
  constexpr unsigned wanted = STATX_BASIC_STATS | STATX_BTIME;
  if (::statx(item.get(), "", AT_EMPTY_PATH | AT_NO_AUTOMOUNT, wanted, &status) != 0) {
    return SystemError::fromErrno(errno, path);
  }
  return status;
}

double secondsOf(const struct statx_timestamp& time) {
  return static_cast<double>(time.tv_sec) + time.tv_nsec / 1e9;
}

// Grows the buffer as needed: some file systems do not report the length of a link.
std::string targetOf(const FileDescriptor& link) {
  for (std::size_t room = 256;; room *= 2) {
    std::string target(room, '\0');
    const ssize_t length = ::readlinkat(link.get(), "", target.data(), room);
    if (length < 0) return {};
    if (static_cast<std::size_t>(length) == room) continue;
    target.resize(static_cast<std::size_t>(length));
    return target;
  }
}

bool isDirectory(int folder, const dirent& entry) {
  if (entry.d_type != DT_UNKNOWN) return entry.d_type == DT_DIR;
  struct statx status {};
  constexpr int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT;
  return ::statx(folder, entry.d_name, flags, STATX_TYPE, &status) == 0 && S_ISDIR(status.stx_mode);
}

// For a link that exists itself.
bool isDeadEnd(int error) {
  return error == ENOENT || error == ENOTDIR || error == ELOOP || error == ENAMETOOLONG;
}

HeldItem::Facts factsFrom(const struct statx& status) {
  HeldItem::Facts facts;
  if (S_ISREG(status.stx_mode)) facts.type = HeldItem::Type::file;
  if (S_ISDIR(status.stx_mode)) facts.type = HeldItem::Type::folder;
  facts.size = static_cast<std::int64_t>(status.stx_size);
  facts.identity.device = makedev(status.stx_dev_major, status.stx_dev_minor);
  facts.identity.inode = status.stx_ino;
  if ((status.stx_mask & STATX_BTIME) != 0) {
    facts.created = secondsOf(status.stx_btime);
    // Unsigned, since a damaged file system may report any number.
    facts.identity.created = static_cast<std::uint64_t>(status.stx_btime.tv_sec) * 1'000'000'000 +
                             status.stx_btime.tv_nsec;
  }
  if ((status.stx_mask & STATX_MTIME) != 0) facts.modified = secondsOf(status.stx_mtime);
  return facts;
}

}  // namespace

struct HeldItem::Descriptors {
  FileDescriptor item;     // O_PATH
  FileDescriptor content;  // set by openContent() for a file
};

HeldItem::HeldItem() : held_(std::make_unique<Descriptors>()) {}
HeldItem::HeldItem(HeldItem&& other) noexcept = default;
HeldItem& HeldItem::operator=(HeldItem&& other) noexcept = default;
HeldItem::~HeldItem() = default;

Result<HeldItem> HeldItem::itself(const std::string& path) {
  // The system would cut the path at the NUL, and so open another item.
  if (!path.starts_with('/') || path.find('\0') != std::string::npos) {
    return SystemError::fromErrno(EINVAL, path);
  }
  HeldItem held;
  held.path_ = path;
  held.held_->item = openPath(path, O_PATH | O_NOFOLLOW);
  if (!held.held_->item) return SystemError::fromErrno(errno, path);
  const Result<struct statx> status = statusOf(held.held_->item, path);
  if (!status) return status.error();
  held.facts_ = factsFrom(status.value());
  if (S_ISLNK(status.value().stx_mode)) held.facts_.linkTarget = targetOf(held.held_->item);
  held.isLink_ = S_ISLNK(status.value().stx_mode);
  return held;
}

Result<HeldItem> HeldItem::at(const std::string& path) {
  Result<HeldItem> link = itself(path);
  if (!link || !link.value().isLink_) return link;
  HeldItem& held = link.value();
  FileDescriptor end = openPath(path, O_PATH);
  if (!end) {
    if (!isDeadEnd(errno)) return SystemError::fromErrno(errno, path);
    held.facts_.isBrokenLink = true;
    return link;
  }
  const Result<struct statx> status = statusOf(end, path);
  if (!status) return status.error();
  held.held_->item = std::move(end);
  std::string linkTarget = std::move(held.facts_.linkTarget);
  held.facts_ = factsFrom(status.value());
  held.facts_.linkTarget = std::move(linkTarget);
  return link;
}

// Opens the descriptor's own name, which means this item even if another one is at its path now.
// O_NONBLOCK is for special files that would wait for data.
Outcome HeldItem::openContent() {
  if (facts_.type != Type::file) return SystemError::fromErrno(EINVAL, path_);
  const std::string name = "/proc/self/fd/" + std::to_string(held_->item.get());
  held_->content = openAt(AT_FDCWD, name, O_RDONLY | O_NONBLOCK | O_NOCTTY);
  if (!held_->content) return SystemError::fromErrno(errno, path_);
  return succeeded();
}

Result<std::size_t> HeldItem::read(std::int64_t offset, char* to, std::size_t count) const {
  const ssize_t length =
      uninterrupted([&] { return ::pread(held_->content.get(), to, count, offset); });
  if (length < 0) return SystemError::fromErrno(errno, path_);
  return static_cast<std::size_t>(length);
}

Result<std::string> HeldItem::ownPath() const {
  if (!isLink_ || facts_.isBrokenLink) return path_;
  const std::string name = "/proc/self/fd/" + std::to_string(held_->item.get());
  std::string path(PATH_MAX, '\0');
  const ssize_t length = ::readlink(name.c_str(), path.data(), path.size());
  if (length < 0) return SystemError::fromErrno(errno, path_);
  path.resize(static_cast<std::size_t>(length));
  return path;
}

Outcome HeldItem::forEachEntry(const std::function<bool(const Entry&)>& take) const {
  const int folder = uninterrupted(
      [&] { return ::openat(held_->item.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
  if (folder < 0) return SystemError::fromErrno(errno, path_);
  const std::unique_ptr<DIR, int (*)(DIR*)> stream(::fdopendir(folder), ::closedir);
  if (!stream) {
    const int error = errno;
    ::close(folder);
    return SystemError::fromErrno(error, path_);
  }
  while (true) {
    errno = 0;
    const dirent* entry = ::readdir(stream.get());
    if (entry == nullptr) break;
    const std::string_view name = entry->d_name;
    if (name == "." || name == "..") continue;
    if (!take({.name = name, .isFolder = isDirectory(folder, *entry)})) return succeeded();
  }
  if (errno != 0) return SystemError::fromErrno(errno, path_);
  return succeeded();
}

std::int64_t HeldItem::entrySize(const std::string& name) const {
  struct statx status {};
  constexpr int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT;
  if (::statx(held_->item.get(), name.c_str(), flags, STATX_TYPE | STATX_SIZE, &status) != 0 ||
      S_ISDIR(status.stx_mode)) {
    return 0;
  }
  return static_cast<std::int64_t>(status.stx_size);
}

}  // namespace tessaly
