#include "platform/FileIdentity.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include "platform/linux/IdentityFromStatus.h"

namespace tessaly {

namespace {

FileIdentity::Kind kindOf(unsigned mode) {
  if (S_ISREG(mode)) return FileIdentity::Kind::file;
  if (S_ISDIR(mode)) return FileIdentity::Kind::folder;
  if (S_ISLNK(mode)) return FileIdentity::Kind::link;
  return FileIdentity::Kind::other;
}

// Unsigned, since a damaged file system may report any number.
std::uint64_t nanoseconds(std::int64_t seconds, std::int64_t rest) {
  return static_cast<std::uint64_t>(seconds) * 1'000'000'000 + static_cast<std::uint64_t>(rest);
}

}  // namespace

FileIdentity identityFrom(const struct stat& status) {
  FileIdentity identity;
  identity.kind = kindOf(status.st_mode);
  identity.device = status.st_dev;
  identity.inode = status.st_ino;
  identity.size = status.st_size;
  identity.modifiedSeconds = status.st_mtim.tv_sec;
  identity.modifiedNanoseconds = status.st_mtim.tv_nsec;
  identity.changed = nanoseconds(status.st_ctim.tv_sec, status.st_ctim.tv_nsec);
  return identity;
}

FileIdentity identityFrom(const struct statx& status) {
  FileIdentity identity;
  identity.kind = kindOf(status.stx_mode);
  identity.device = makedev(status.stx_dev_major, status.stx_dev_minor);
  identity.inode = status.stx_ino;
  identity.size = static_cast<std::int64_t>(status.stx_size);
  identity.modifiedSeconds = status.stx_mtime.tv_sec;
  identity.modifiedNanoseconds = status.stx_mtime.tv_nsec;
  if ((status.stx_mask & STATX_BTIME) != 0)
    identity.created = nanoseconds(status.stx_btime.tv_sec, status.stx_btime.tv_nsec);
  if ((status.stx_mask & STATX_CTIME) != 0)
    identity.changed = nanoseconds(status.stx_ctime.tv_sec, status.stx_ctime.tv_nsec);
  return identity;
}

Result<FileIdentity> FileIdentity::of(const std::string& path) {
  constexpr int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT;
  struct statx status {};
  if (::statx(AT_FDCWD, path.c_str(), flags, identityMask, &status) != 0)
    return SystemError::fromErrno(errno, path);
  return identityFrom(status);
}

}  // namespace tessaly
