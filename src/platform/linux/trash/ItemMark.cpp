#include "platform/linux/trash/ItemMark.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

#include "platform/linux/trash/ItemFacts.h"

namespace tessaly {

namespace {

std::int64_t nanoseconds(const struct statx_timestamp& time) {
  constexpr std::int64_t inOneSecond = 1'000'000'000;
  std::int64_t result = 0;
  if (__builtin_mul_overflow(time.tv_sec, inOneSecond, &result) ||
      __builtin_add_overflow(result, std::int64_t{time.tv_nsec}, &result)) {
    return 0;
  }
  return result;
}

bool keepsNumbers(const FileDescriptor& folder) {
  const Result<bool> told = inodesLastAt(folder, "");
  return !told || told.value();
}

}  // namespace

bool ItemMark::isSameItem(const ItemMark& other) const {
  if (type != other.type || born != other.born) return false;
  const bool isOneNumber = hasStableNumber ? identity.isSameItem(other.identity)
                                           : identity.deviceMajor == other.identity.deviceMajor &&
                                                 identity.deviceMinor == other.identity.deviceMinor;
  const bool isKnownByNumber = hasStableNumber && born != 0;
  return isOneNumber && (isKnownByNumber || (size == other.size && changed == other.changed));
}

bool ItemMark::isUnchanged(const ItemMark& other) const {
  return isSameItem(other) && size == other.size && changed == other.changed;
}

int markOf(const FileDescriptor& folder, const std::string& name, ItemMark& mark) {
  constexpr int flags = AT_SYMLINK_NOFOLLOW | AT_EMPTY_PATH | AT_NO_AUTOMOUNT;
  constexpr unsigned wanted =
      STATX_TYPE | STATX_INO | STATX_SIZE | STATX_MTIME | STATX_CTIME | STATX_BTIME | STATX_MNT_ID;
  struct statx status {};
  if (::statx(folder.get(), name.c_str(), flags, wanted, &status) != 0) return errno;
  if ((status.stx_mask & STATX_MNT_ID) == 0) return ENOSYS;
  mark.identity = {.deviceMajor = status.stx_dev_major,
                   .deviceMinor = status.stx_dev_minor,
                   .inode = status.stx_ino,
                   .mount = status.stx_mnt_id};
  mark.type = status.stx_mode & S_IFMT;
  mark.size = status.stx_size;
  mark.changed = nanoseconds(status.stx_mtime);
  mark.lastTouched = std::max(status.stx_mtime.tv_sec, status.stx_ctime.tv_sec);
  mark.born = (status.stx_mask & STATX_BTIME) != 0 ? nanoseconds(status.stx_btime) : 0;
  mark.hasStableNumber = keepsNumbers(folder);
  return 0;
}

}  // namespace tessaly
