#include "platform/linux/trash/ItemFacts.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/vfs.h>

#include "platform/linux/Uninterrupted.h"

namespace tessaly {

namespace {

std::string textOf(const struct statx_timestamp& time) {
  return std::to_string(time.tv_sec) + "." + std::to_string(time.tv_nsec);
}

std::string numberOf(const struct statx& status) {
  return "device " + std::to_string(status.stx_dev_major) + ":" +
         std::to_string(status.stx_dev_minor) + " inode " + std::to_string(status.stx_ino);
}

std::string typeOf(const struct statx& status) {
  return "type " + std::to_string(status.stx_mode & S_IFMT);
}

bool hasBirth(const struct statx& status) {
  return (status.stx_mask & STATX_BTIME) != 0;
}

Result<struct statx> statusOf(const FileDescriptor& folder, const std::string& name,
                              const std::string& path) {
  constexpr int flags = AT_SYMLINK_NOFOLLOW | AT_EMPTY_PATH | AT_NO_AUTOMOUNT;
  struct statx status {};
  if (::statx(folder.get(), name.c_str(), flags, ItemFacts::wanted(), &status) != 0) {
    return SystemError::fromErrno(errno, path);
  }
  return status;
}

}  // namespace

namespace ItemFacts {

bool inodesLast(unsigned long fileSystem) {
  constexpr unsigned long virtualBox = 0x786F4256;
  constexpr std::array<unsigned long, 8> madeUp = {
      MSDOS_SUPER_MAGIC, EXFAT_SUPER_MAGIC, FUSE_SUPER_MAGIC, SMB_SUPER_MAGIC,
      CIFS_SUPER_MAGIC,  SMB2_SUPER_MAGIC,  virtualBox,       OVERLAYFS_SUPER_MAGIC};
  return std::find(madeUp.begin(), madeUp.end(), fileSystem) == madeUp.end();
}

std::string text(const struct statx& status, bool inodesLast) {
  std::string facts = inodesLast ? numberOf(status) + " " : std::string();
  facts += typeOf(status);
  if (inodesLast && hasBirth(status)) return facts + " born " + textOf(status.stx_btime);
  return facts + " size " + std::to_string(status.stx_size) + " changed " +
         textOf(status.stx_mtime);
}

std::string folderText(const struct statx& status, bool inodesLast) {
  if (!inodesLast) return {};
  std::string facts = numberOf(status);
  if (hasBirth(status)) facts += " born " + textOf(status.stx_btime);
  return facts;
}

unsigned wanted() {
  return STATX_TYPE | STATX_INO | STATX_SIZE | STATX_MTIME | STATX_BTIME;
}

}  // namespace ItemFacts

Result<bool> inodesLastAt(const FileDescriptor& item, const std::string& path) {
  struct statfs status {};
  if (uninterrupted([&] { return ::fstatfs(item.get(), &status); }) != 0) {
    return SystemError::fromErrno(errno, path);
  }
  // The type is signed on some systems, and some magic numbers have the highest of 32 bits set.
  return ItemFacts::inodesLast(static_cast<unsigned long>(status.f_type) & 0xFFFFFFFFUL);
}

Result<std::string> factsOf(const FileDescriptor& folder, const std::string& name, bool inodesLast,
                            const std::string& path) {
  const Result<struct statx> status = statusOf(folder, name, path);
  if (!status) return status.error();
  return ItemFacts::text(status.value(), inodesLast);
}

Result<std::string> folderFactsOf(const FileDescriptor& folder, bool inodesLast,
                                  const std::string& path) {
  const Result<struct statx> status = statusOf(folder, "", path);
  if (!status) return status.error();
  return ItemFacts::folderText(status.value(), inodesLast);
}

}  // namespace tessaly
