#include "platform/linux/trash/InfoReserve.h"

#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <linux/fs.h>
#include <linux/magic.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include "platform/linux/Uninterrupted.h"
#include "platform/linux/trash/ItemLocation.h"
#include "platform/linux/trash/MoveItem.h"

namespace tessaly {

namespace {

bool isOwn(const struct stat& status) {
  return status.st_uid == ::geteuid();
}

// A regular file of the user with only one name.
bool isPlain(const struct stat& status) {
  return S_ISREG(status.st_mode) && status.st_nlink == 1 && isOwn(status);
}

bool holdsItsRoom(const struct stat& status) {
  constexpr std::uint64_t blockSize = 512;
  const auto allocated = static_cast<std::uint64_t>(status.st_blocks) * blockSize;
  return static_cast<std::uint64_t>(status.st_size) >= InfoReserve::length &&
         allocated >= InfoReserve::length;
}

FileDescriptor openReserve(const FileDescriptor& trash) {
  FileDescriptor folder = openFolder(trash, InfoReserve::folderName, O_PATH);
  struct stat status {};
  if (folder && ::fstat(folder.get(), &status) == 0 && isOwn(status)) return folder;
  return FileDescriptor();
}

// Writes the content, followed by line feeds up to the full length, at the beginning of the file.
bool write(const FileDescriptor& file, std::string_view content) {
  std::string all(content);
  all.resize(InfoReserve::length, '\n');
  std::size_t done = 0;
  while (done < all.size()) {
    const ssize_t written = uninterrupted([&] {
      return ::pwrite(file.get(), all.data() + done, all.size() - done, static_cast<off_t>(done));
    });
    if (written == 0) errno = EIO;
    if (written <= 0) return false;
    done += static_cast<std::size_t>(written);
  }
  return true;
}

bool hasPlentyOfRoom(const FileDescriptor& folder) {
  struct statvfs status {};
  if (::fstatvfs(folder.get(), &status) != 0) return false;
  constexpr std::uint64_t bytes = 8 * InfoReserve::count * InfoReserve::length;
  constexpr std::uint64_t files = std::uint64_t{8} * InfoReserve::count;
  const bool countsFiles = status.f_files != 0;
  return std::uint64_t{status.f_bavail} * status.f_frsize >= bytes &&
         (!countsFiles || status.f_favail >= files);
}

// Copy-on-write is switched off, which requires that the file is still empty.
bool canBeWrittenInPlace(const FileDescriptor& file) {
  struct statfs status {};
  if (::fstatfs(file.get(), &status) != 0) return false;
  if (static_cast<std::uint32_t>(status.f_type) != BTRFS_SUPER_MAGIC) return true;
  int flags = 0;
  if (::ioctl(file.get(), FS_IOC_GETFLAGS, &flags) != 0) return false;
  flags |= FS_NOCOW_FL;
  return ::ioctl(file.get(), FS_IOC_SETFLAGS, &flags) == 0;
}

// The file gets its name only when it is complete.
bool make(const FileDescriptor& reserve, const std::string& name) {
  const FileDescriptor file(uninterrupted(
      [&] { return ::openat(reserve.get(), ".", O_TMPFILE | O_RDWR | O_CLOEXEC, 0600); }));
  if (!file || !canBeWrittenInPlace(file)) return false;
  const auto length = static_cast<off_t>(InfoReserve::length);
  if (uninterrupted([&] { return ::fallocate(file.get(), 0, 0, length); }) != 0) return false;
  struct stat status {};
  if (!write(file, "") || ::fstat(file.get(), &status) != 0 || !holdsItsRoom(status)) return false;
  const std::string itself = "/proc/self/fd/" + std::to_string(file.get());
  const int made =
      ::linkat(AT_FDCWD, itself.c_str(), reserve.get(), name.c_str(), AT_SYMLINK_FOLLOW);
  return made == 0 || errno == EEXIST;
}

}  // namespace

void InfoReserve::fill(const FileDescriptor& trash, Where where) {
  if (!hasPlentyOfRoom(trash)) return;
  if (where == Where::everywhere) ::mkdirat(trash.get(), folderName, 0700);
  const FileDescriptor reserve = openReserve(trash);
  if (!reserve) return;
  for (int number = 1; number <= count; ++number) {
    const std::string name = std::to_string(number);
    struct stat status {};
    if (::fstatat(reserve.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0) {
      if (!isPlain(status) || holdsItsRoom(status)) continue;
      // A copy, for example from a backup, that holds no space.
      ::unlinkat(reserve.get(), name.c_str(), 0);
    }
    if (!make(reserve, name)) return;
  }
}

ReservedInfo::ReservedInfo(const FileDescriptor& info, const std::string& name,
                           std::string_view content)
    : info_(info), name_(name), length_(content.size()) {
  if (content.size() > InfoReserve::length) {
    errno = EFBIG;
    return;
  }
  if (const FileDescriptor trash = openFolder(info, "..", O_PATH)) reserve_ = openReserve(trash);
  int code = ENOENT;
  for (int number = 1; reserve_ && number <= InfoReserve::count; ++number) {
    if (take(number, content)) return;
    if (errno != ENOENT) code = errno;
    if (code == EEXIST) break;
  }
  errno = code;
}

// Moving the file first makes sure that only one program writes to it.
bool ReservedInfo::take(int number, std::string_view content) {
  origin_ = std::to_string(number);
  struct stat before {};
  if (::fstatat(reserve_.get(), origin_.c_str(), &before, AT_SYMLINK_NOFOLLOW) != 0) return false;
  if (!isPlain(before) || !holdsItsRoom(before)) {
    errno = ENOENT;
    return false;
  }
  Result<ItemIdentity> identity = identityOf(reserve_, origin_, "");
  int code = identity ? 0 : identity.error().code;
  if (code == 0) code = moveItem({reserve_, origin_}, {info_, name_}, identity.value());
  if (code != 0) {
    errno = code;
    return false;
  }
  // It may not be the file that was checked, since other programs take files and refill the
  // reserve.
  identity = identityOf(info_, name_, "");
  if (identity) identity_ = identity.value();
  constexpr int flags = O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
  file_ =
      FileDescriptor(uninterrupted([&] { return ::openat(info_.get(), name_.c_str(), flags); }));
  struct stat now {};
  const bool isFit = file_ && ::fstat(file_.get(), &now) == 0 && isPlain(now) && holdsItsRoom(now);
  if (file_ && !isFit) errno = ENOENT;
  if (isFit && write(file_, content) && uninterrupted([&] { return ::fsync(file_.get()); }) == 0) {
    syncFolder(info_);
    return true;
  }
  giveBack();
  return false;
}

void ReservedInfo::keep() {
  uninterrupted([&] { return ::ftruncate(file_.get(), static_cast<off_t>(length_)); });
  file_ = FileDescriptor();
}

void ReservedInfo::giveBack() {
  const int code = errno;
  const Result<ItemIdentity> there = identityOf(info_, name_, "");
  if (there && there.value().isSameItem(identity_) &&
      moveItem({info_, name_}, {reserve_, origin_}, identity_) != 0) {
    ::unlinkat(info_.get(), name_.c_str(), 0);
  }
  file_ = FileDescriptor();
  errno = code;
}

}  // namespace tessaly
