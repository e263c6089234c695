#include "platform/linux/trash/UserTrashFolders.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <utility>

#include "platform/linux/ReadMounts.h"
#include "platform/linux/Uninterrupted.h"
#include "platform/linux/trash/VolumeTrash.h"

namespace tessaly {

namespace {

// Follows links.
FileDescriptor lookUpTop(const std::string& path) {
  return FileDescriptor(
      uninterrupted([&] { return ::open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC); }));
}

struct stat statusOf(const FileDescriptor& folder) {
  struct stat status {};
  if (::fstat(folder.get(), &status) != 0) status = {};
  return status;
}

bool isReadOnly(const FileDescriptor& folder) {
  struct statvfs status {};
  return ::fstatvfs(folder.get(), &status) == 0 && (status.f_flag & ST_RDONLY) != 0;
}

class Search {
 public:
  explicit Search(const TrashConfig& config) : config_(config) {}

  UserTrashFolders everywhere() {
    lookInHome();
    lookOnMounts();
    return std::move(found_);
  }

  UserTrashFolders inHome() {
    lookInHome();
    return std::move(found_);
  }

  UserTrashFolders on(const std::string& point) {
    lookAtTop(point);
    return std::move(found_);
  }

 private:
  void lookInHome() {
    FileDescriptor home = lookUpTop(config_.homeTrash);
    if (home) {
      add(std::move(home), config_.homeTrash);
    } else if (errno != ENOENT && errno != ENOTDIR) {
      found_.errors.push_back(SystemError::fromErrno(errno, config_.homeTrash));
    }
  }

  void lookOnMounts() {
    const Result<std::vector<Mount>> mounts = readMounts(config_.mountinfo);
    if (!mounts) {
      found_.errors.push_back(mounts.error());
      return;
    }
    for (const Mount& mount : mounts.value()) {
      if (!mount.isPseudo()) lookAtTop(mount.point);
    }
  }

  void lookAtTop(const std::string& point) {
    const FileDescriptor top = lookUpTop(point);
    if (!top) return;
    for (UserTrashFolder& trash : VolumeTrash::find(top, point, config_.user)) {
      add(std::move(trash.folder), trash.path);
    }
  }

  void add(FileDescriptor folder, const std::string& path) {
    const struct stat status = statusOf(folder);
    const auto isSame = [&](const UserTrashFolder& other) {
      const struct stat known = statusOf(other.folder);
      return known.st_dev == status.st_dev && known.st_ino == status.st_ino;
    };
    const auto known = std::find_if(found_.all.begin(), found_.all.end(), isSame);
    UserTrashFolder found{.folder = std::move(folder), .path = path};
    if (known == found_.all.end()) {
      found_.all.push_back(std::move(found));
    } else if (isReadOnly(known->folder) && !isReadOnly(found.folder)) {
      *known = std::move(found);
    }
  }

  const TrashConfig& config_;
  UserTrashFolders found_;
};

}  // namespace

UserTrashFolders userTrashFolders(const TrashConfig& config) {
  return Search(config).everywhere();
}

UserTrashFolders homeTrashFolder(const TrashConfig& config) {
  return Search(config).inHome();
}

UserTrashFolders trashFoldersOn(const TrashConfig& config, const std::string& point) {
  return Search(config).on(point);
}

}  // namespace tessaly
