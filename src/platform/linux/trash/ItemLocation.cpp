#include "platform/linux/trash/ItemLocation.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/Uninterrupted.h"
#include "platform/linux/trash/OpenFolderPath.h"

namespace tessaly {

namespace {

// The system would cut the path at a NUL, and so open another item.
bool isMeant(const std::string& path) {
  return path.starts_with('/') && path.find('\0') == std::string::npos;
}

std::string withoutSlashesBehind(std::string path) {
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path;
}

Result<ItemLocation> locationIn(const std::string& path,
                                FileDescriptor (*folderAt)(const std::string& folder)) {
  if (!isMeant(path)) return SystemError::fromErrno(EINVAL, path);
  const std::string item = withoutSlashesBehind(path);
  if (item == "/") return SystemError::fromErrno(EBUSY, path);
  const std::size_t slash = item.rfind('/');
  ItemLocation location;
  location.name = item.substr(slash + 1);
  if (location.name == "." || location.name == "..") return SystemError::fromErrno(EINVAL, path);
  location.folder = folderAt(item.substr(0, slash + 1));
  if (!location.folder) return SystemError::fromErrno(errno, path);
  return location;
}

}  // namespace

Result<ItemIdentity> identityOf(const FileDescriptor& folder, const std::string& name,
                                const std::string& path) {
  constexpr int flags = AT_SYMLINK_NOFOLLOW | AT_EMPTY_PATH | AT_NO_AUTOMOUNT;
  struct statx status {};
  if (::statx(folder.get(), name.c_str(), flags, STATX_INO | STATX_MNT_ID, &status) != 0) {
    return SystemError::fromErrno(errno, path);
  }
  if ((status.stx_mask & STATX_MNT_ID) == 0) return SystemError::fromErrno(ENOSYS, path);
  return ItemIdentity{.deviceMajor = status.stx_dev_major,
                      .deviceMinor = status.stx_dev_minor,
                      .inode = status.stx_ino,
                      .mount = status.stx_mnt_id};
}

Result<ItemLocation> locationOfItem(const std::string& path) {
  return locationIn(path, openFolderPath);
}

Result<ItemLocation> locationForItem(const std::string& path) {
  return locationIn(path, makeFolderPath);
}

FileDescriptor holdItem(const FileDescriptor& folder, const std::string& name) {
  return FileDescriptor(uninterrupted(
      [&] { return ::openat(folder.get(), name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC); }));
}

FileDescriptor openFolder(const FileDescriptor& folder, const std::string& name, int flags) {
  return FileDescriptor(uninterrupted([&] {
    return ::openat(folder.get(), name.c_str(), flags | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  }));
}

Result<std::string> pathOf(const FileDescriptor& folder, const std::string& path) {
  const std::string link = "/proc/self/fd/" + std::to_string(folder.get());
  char target[PATH_MAX];
  const ssize_t length = ::readlink(link.c_str(), target, sizeof target);
  if (length < 0) return SystemError::fromErrno(errno, path);
  std::string found(target, static_cast<std::size_t>(length));
  // The system puts "(unreachable)" in front of a path that is not below the root.
  if (!found.starts_with('/')) return SystemError::fromErrno(ENOENT, path);
  return found;
}

void syncFolder(const FileDescriptor& folder) {
  const FileDescriptor readable = openFolder(folder, ".", O_RDONLY);
  if (readable) uninterrupted([&] { return ::fsync(readable.get()); });
}

}  // namespace tessaly
