#include "platform/linux/trash/MoveItem.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/Uninterrupted.h"

namespace tessaly {

namespace {

Result<bool> areOneItem(const ItemEnd& one, const ItemEnd& other) {
  const Result<ItemIdentity> first = identityOf(one.folder, one.name, "");
  if (!first) return first.error();
  const Result<ItemIdentity> second = identityOf(other.folder, other.name, "");
  if (!second) return second.error();
  return first.value().isSameItem(second.value());
}

// False with errno ESTALE if the name belongs to another item by now.
bool removeSecondName(const ItemEnd& name, const ItemEnd& kept) {
  // The name to be removed is checked last.
  const Result<bool> isOne = areOneItem(kept, name);
  if (!isOne || !isOne.value()) {
    errno = isOne ? ESTALE : isOne.error().code;
    return false;
  }
  return ::unlinkat(name.folder.get(), name.name.c_str(), 0) == 0;
}

// Moves by a second name. From outside the only difference is that the item has two names for a
// moment.
bool moveByName(const ItemEnd& from, const ItemEnd& to) {
  if (::linkat(from.folder.get(), from.name.c_str(), to.folder.get(), to.name.c_str(), 0) != 0) {
    return false;
  }
  if (removeSecondName(from, to)) return true;
  const int code = errno;
  // Another item has taken the first name, so the move is complete.
  if (code == ESTALE) return true;
  removeSecondName(to, from);
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

bool isStillOurs(const FileDescriptor& file, const ItemEnd& end) {
  struct stat ours {};
  struct stat there {};
  return ::fstat(file.get(), &ours) == 0 &&
         ::fstatat(end.folder.get(), end.name.c_str(), &there, AT_SYMLINK_NOFOLLOW) == 0 &&
         ours.st_dev == there.st_dev && ours.st_ino == there.st_ino && there.st_size == 0;
}

bool moveOverOwnFile(const ItemEnd& from, const ItemEnd& to) {
  const FileDescriptor file(uninterrupted([&] {
    const int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    return ::openat(to.folder.get(), to.name.c_str(), flags, 0600);
  }));
  if (!file) return false;
  if (!isStillOurs(file, to)) {
    errno = EEXIST;
    return false;
  }
  if (::renameat(from.folder.get(), from.name.c_str(), to.folder.get(), to.name.c_str()) == 0) {
    return true;
  }
  const int code = errno;
  if (isStillOurs(file, to)) ::unlinkat(to.folder.get(), to.name.c_str(), 0);
  // On this file system a plain rename replaces nothing.
  if (code == EEXIST) return moveAfterLooking(from, to);
  errno = code;
  return false;
}

bool moveWithoutTheFlag(const ItemEnd& from, const ItemEnd& to) {
  struct stat status {};
  const int flags = AT_SYMLINK_NOFOLLOW;
  if (::fstatat(from.folder.get(), from.name.c_str(), &status, flags) != 0) return false;
  if (S_ISDIR(status.st_mode) || to.isReserved) return moveAfterLooking(from, to);
  if (moveByName(from, to)) return true;
  // The file system does not support hard links.
  const bool hasNoLinks = errno == EPERM || errno == EOPNOTSUPP || errno == ENOSYS;
  return hasNoLinks && moveOverOwnFile(from, to);
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
