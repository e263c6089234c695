#include "platform/FileIdentity.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include "platform/linux/IdentityFromStatus.h"

namespace tessaly {

namespace {

FileIdentity::Kind kindOf(mode_t mode) {
  if (S_ISREG(mode)) return FileIdentity::Kind::file;
  if (S_ISDIR(mode)) return FileIdentity::Kind::folder;
  if (S_ISLNK(mode)) return FileIdentity::Kind::link;
  return FileIdentity::Kind::other;
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
  return identity;
}

Result<FileIdentity> FileIdentity::of(const std::string& path) {
  constexpr int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT;
  constexpr unsigned wanted = STATX_BASIC_STATS | STATX_BTIME;
  struct statx status {};
  if (::statx(AT_FDCWD, path.c_str(), flags, wanted, &status) != 0)
    return SystemError::fromErrno(errno, path);
  FileIdentity identity;
  identity.kind = kindOf(status.stx_mode);
  identity.device = makedev(status.stx_dev_major, status.stx_dev_minor);
  identity.inode = status.stx_ino;
  identity.size = static_cast<std::int64_t>(status.stx_size);
  identity.modifiedSeconds = status.stx_mtime.tv_sec;
  identity.modifiedNanoseconds = status.stx_mtime.tv_nsec;
  if ((status.stx_mask & STATX_BTIME) != 0) {
    identity.created = static_cast<std::uint64_t>(status.stx_btime.tv_sec) * 1'000'000'000 +
                       status.stx_btime.tv_nsec;
  }
  return identity;
}

}  // namespace tessaly
