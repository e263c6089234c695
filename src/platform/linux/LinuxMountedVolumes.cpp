#include "platform/linux/LinuxMountedVolumes.h"

#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <string_view>
#include <sys/stat.h>
#include <sys/statvfs.h>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/ReadMounts.h"
#include "platform/linux/Uninterrupted.h"
#include "platform/linux/VisibleMounts.h"
#include "platform/linux/trash/CountItems.h"
#include "platform/linux/trash/FolderEntries.h"
#include "platform/linux/trash/ItemLocation.h"
#include "platform/linux/trash/UserTrashFolders.h"

namespace tessaly {

namespace {

bool isReplaced(const FileDescriptor& top, std::uint64_t id) {
  struct statx status {};
  constexpr int flags = AT_EMPTY_PATH | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC;
  return ::statx(top.get(), "", flags, STATX_MNT_ID, &status) == 0 &&
         (status.stx_mask & STATX_MNT_ID) != 0 && status.stx_mnt_id != id;
}

std::optional<VolumeFigures> figuresFrom(const struct statvfs& status) {
  if (status.f_bfree > status.f_blocks) return std::nullopt;
  const auto bytes = [&](fsblkcnt_t blocks, std::int64_t& product) {
    return !__builtin_mul_overflow(blocks, status.f_frsize, &product);
  };
  VolumeFigures figures;
  if (!bytes(status.f_blocks, figures.total) || !bytes(status.f_bavail, figures.free) ||
      !bytes(status.f_blocks - status.f_bfree, figures.used)) {
    return std::nullopt;
  }
  return figures;
}

std::vector<std::string> contentsOf(const UserTrashFolder& trash) {
  std::vector<std::string> found;
  // Partly deleted items wait in the second one.
  for (const char* name : {"files", "expunged"}) {
    const FileDescriptor folder = openFolder(trash.folder, name, O_RDONLY);
    bool hasEntries = false;
    const auto note = [&](std::string_view, unsigned char) { hasEntries = true; };
    if (folder && forEachEntry(folder, note) == 0 && hasEntries) {
      found.push_back(trash.path + "/" + name);
    }
  }
  return found;
}

Result<std::vector<CountedTrash>> counted(const UserTrashFolders& folders) {
  if (!folders.errors.empty()) return folders.errors.front();
  std::vector<CountedTrash> all;
  for (const UserTrashFolder& trash : folders.all) {
    struct stat status {};
    if (::fstat(trash.folder.get(), &status) != 0) {
      return SystemError::fromErrno(errno, trash.path);
    }
    const Result<std::int64_t> items = countItems(trash);
    if (!items) return items.error();
    all.push_back({.device = status.st_dev,
                   .inode = status.st_ino,
                   .items = items.value(),
                   .contents = contentsOf(trash)});
  }
  return all;
}

}  // namespace

Result<std::vector<MountedVolume>> LinuxMountedVolumes::list() {
  Result<std::vector<Mount>> mounts = readMounts(config_.mountinfo);
  if (!mounts) return mounts.error();
  const VisibleMounts visible(std::move(mounts).value());
  std::vector<MountedVolume> volumes;
  for (VisibleMounts::Index i = 0; i < visible.all().size(); ++i) {
    const Mount& mount = visible.all()[i];
    if (mount.isPseudo() || !visible.isVisible(i)) continue;
    volumes.push_back({.id = mount.id,
                       .path = mount.point,
                       .device = mount.device,
                       .root = mount.root,
                       .type = mount.type});
  }
  return volumes;
}

Result<VolumeFigures> LinuxMountedVolumes::figures(const MountedVolume& volume) {
  const FileDescriptor top(
      uninterrupted([&] { return ::open(volume.path.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC); }));
  if (!top) return SystemError::fromErrno(errno, volume.path);
  if (isReplaced(top, volume.id)) return SystemError::fromErrno(ENOENT, volume.path);
  struct statvfs status {};
  if (uninterrupted([&] { return ::fstatvfs(top.get(), &status); }) != 0) {
    return SystemError::fromErrno(errno, volume.path);
  }
  const std::optional<VolumeFigures> figures = figuresFrom(status);
  if (!figures) return SystemError::fromErrno(EOVERFLOW, volume.path);
  return *figures;
}

Result<std::vector<CountedTrash>> LinuxMountedVolumes::trashInHome() {
  return counted(homeTrashFolder(config_));
}

Result<std::vector<CountedTrash>> LinuxMountedVolumes::trashOn(const MountedVolume& volume) {
  return counted(trashFoldersOn(config_, volume.path));
}

}  // namespace tessaly
