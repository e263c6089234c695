#include "platform/FileBlocks.h"

#include <fcntl.h>
#include <map>
#include <memory>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include "platform/PatientPass.h"
#include "platform/linux/AllocatedBytes.h"
#include "platform/linux/ExtentMap.h"
#include "platform/linux/MountSnapshotData.h"
#include "platform/linux/OpenPath.h"

namespace tessaly {

namespace {

// Immutable; safe from any thread.
class Examination {
 public:
  explicit Examination(std::vector<std::string> paths) : paths_(std::move(paths)) {
    for (const Mount& mount : mounts().all()) {
      if (mount.type == "btrfs") btrfs_.emplace(mount.id, mount.device);
    }
  }

  std::optional<FileBlocks> examine(std::size_t item,
                                    const std::function<bool()>& isGivenUp) const {
    const std::string& path = paths_[item];
    // The system would cut the path at the NUL, and so examine another item.
    if (!path.starts_with('/') || path.find('\0') != std::string::npos) return std::nullopt;
    if (isOnAutomount(path)) return std::nullopt;
    const FileDescriptor found = openPath(path, O_PATH | O_NOFOLLOW);
    struct statx status {};
    constexpr unsigned wanted = STATX_BASIC_STATS | STATX_MNT_ID;
    if (!found || ::statx(found.get(), "", AT_EMPTY_PATH, wanted, &status) != 0) {
      return std::nullopt;
    }
    FileBlocks blocks{.device = makedev(status.stx_dev_major, status.stx_dev_minor),
                      .inode = status.stx_ino,
                      .links = status.stx_nlink,
                      .blockBytes = bytesOfBlocks(status.stx_blocks)};
    if (S_ISREG(status.stx_mode)) {
      blocks.cloneId = cloneIdOf(found, fileSystemOf(status, blocks.device), isGivenUp);
    }
    return blocks;
  }

  bool areOnOneMount(std::size_t a, std::size_t b) const {
    return mounts().at(paths_[a]) == mounts().at(paths_[b]);
  }

 private:
  const VisibleMounts& mounts() const { return snapshot_->mounts(); }

  // Whether something was mounted there that no longer is, and would be again. The path is enough
  // to know, and to look at an item would mount it.
  bool isOnAutomount(const std::string& path) const {
    const std::optional<VisibleMounts::Index> mount = mounts().at(path);
    return mount && mounts().all()[*mount].type == "autofs";
  }

  // A subvolume of btrfs, such as a snapshot, has a device number of its own, but shares the blocks
  // of the whole file system, which the device of the mount stands for.
  std::uint64_t fileSystemOf(const struct statx& status, std::uint64_t device) const {
    if ((status.stx_mask & STATX_MNT_ID) == 0) return device;
    const auto mount = btrfs_.find(status.stx_mnt_id);
    return mount == btrfs_.end() ? device : std::hash<std::string>()(mount->second);
  }

  static std::uint64_t cloneIdOf(const FileDescriptor& found, std::uint64_t fileSystem,
                                 const std::function<bool()>& isGivenUp) {
    // The path may lead to another item by now, such as a pipe, and opening that could wake its
    // writer. This way leads to the item that was examined.
    const std::string path = "/proc/self/fd/" + std::to_string(found.get());
    const FileDescriptor file = openPath(path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
    return file ? cloneIdFrom(fileSystem, extentsOf(file.get()), isGivenUp) : 0;
  }

  std::vector<std::string> paths_;
  std::shared_ptr<const MountSnapshot> snapshot_ = mountsOfNow();
  std::map<std::uint64_t, std::string> btrfs_;  // device of each mount with btrfs, by its id
};

}  // namespace

std::vector<std::optional<FileBlocks>> fileBlocks(const std::vector<std::string>& paths,
                                                  const std::function<bool()>& isCancelled) {
  // Shared with a thread that may hang.
  const auto examination = std::make_shared<const Examination>(paths);
  const PatientPass<FileBlocks> pass(
      {.ask =
           [examination](std::size_t item, const std::function<bool()>& isGivenUp) {
             return examination->examine(item, isGivenUp);
           },
       .hangsWith = [examination](
                        std::size_t hung,
                        std::size_t item) { return examination->areOnOneMount(hung, item); }});
  return pass.run(paths.size(), isCancelled);
}

}  // namespace tessaly
