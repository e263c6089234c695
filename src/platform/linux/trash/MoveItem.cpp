#include "platform/linux/trash/MoveItem.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessaly {

namespace {

// The same in all that can be seen from outside, but for a moment in which the item has two names.
bool moveByName(const ItemEnd& from, const ItemEnd& to) {
  if (::linkat(from.folder.get(), from.name.c_str(), to.folder.get(), to.name.c_str(), 0) != 0) {
    return false;
  }
  if (::unlinkat(from.folder.get(), from.name.c_str(), 0) == 0) return true;
  const int code = errno;
  ::unlinkat(to.folder.get(), to.name.c_str(), 0);
  errno = code;
  return false;
}

bool moveAfterLooking(const ItemEnd& from, const ItemEnd& to) {
  struct stat status {};
  const int flags = AT_SYMLINK_NOFOLLOW;
  if (::fstatat(to.folder.get(), to.name.c_str(), &status, flags) == 0) {
    errno = EEXIST;
    return false;
  }
  if (errno != ENOENT) return false;
  return ::renameat(from.folder.get(), from.name.c_str(), to.folder.get(), to.name.c_str()) == 0;
}

bool moveWithoutTheFlag(const ItemEnd& from, const ItemEnd& to) {
  struct stat status {};
  const int flags = AT_SYMLINK_NOFOLLOW;
  if (::fstatat(from.folder.get(), from.name.c_str(), &status, flags) != 0) return false;
  if (S_ISDIR(status.st_mode)) return moveAfterLooking(from, to);
  if (moveByName(from, to)) return true;
  // No second names on this file system.
  const bool hasNoLinks = errno == EPERM || errno == EOPNOTSUPP || errno == ENOSYS;
  return hasNoLinks && moveAfterLooking(from, to);
}

}  // namespace

int moveItem(const ItemEnd& from, const ItemEnd& to, const ItemIdentity& item) {
  if (::renameat2(from.folder.get(), from.name.c_str(), to.folder.get(), to.name.c_str(),
                  RENAME_NOREPLACE) == 0) {
    return 0;
  }
  int code = errno;
  if (code == EINVAL || code == ENOSYS) {
    if (moveWithoutTheFlag(from, to)) return 0;
    code = errno;
  }
  return hasMoved(from, to, item) ? 0 : code;
}

bool hasMoved(const ItemEnd& from, const ItemEnd& to, const ItemIdentity& item) {
  const Result<ItemIdentity> there = identityOf(to.folder, to.name, "");
  if (!there || !there.value().isSameItem(item)) return false;
  const Result<ItemIdentity> left = identityOf(from.folder, from.name, "");
  return !left && left.error().code == ENOENT;
}

}  // namespace tessaly
