#include "platform/FileIdentity.h"

#include <cerrno>
#include <sys/stat.h>

#include "platform/linux/IdentityFromStatus.h"

namespace tessaly {

FileIdentity identityFrom(const struct stat& status) {
  FileIdentity identity;
  if (S_ISREG(status.st_mode)) identity.kind = FileIdentity::Kind::file;
  if (S_ISDIR(status.st_mode)) identity.kind = FileIdentity::Kind::folder;
  if (S_ISLNK(status.st_mode)) identity.kind = FileIdentity::Kind::link;
  identity.device = status.st_dev;
  identity.inode = status.st_ino;
  identity.size = status.st_size;
  identity.modifiedSeconds = status.st_mtim.tv_sec;
  identity.modifiedNanoseconds = status.st_mtim.tv_nsec;
  return identity;
}

Result<FileIdentity> FileIdentity::of(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) return SystemError::fromErrno(errno, path);
  return identityFrom(status);
}

}  // namespace tessaly
