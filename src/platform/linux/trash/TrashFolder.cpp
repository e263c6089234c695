#include "platform/linux/trash/TrashFolder.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <utility>
#include <vector>

#include "platform/ApplicationSupport.h"
#include "platform/linux/ReadMounts.h"
#include "platform/linux/Uninterrupted.h"
#include "platform/linux/trash/VolumeTrash.h"

namespace tessaly {

namespace {

// Follows links.
FileDescriptor openPath(const std::string& path) {
  return FileDescriptor(
      uninterrupted([&] { return ::open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC); }));
}

// The folders from an item up to the top of its file system.
struct Ancestors {
  std::vector<ItemIdentity> all;
  FileDescriptor top;
};

Result<Ancestors> ancestorsOf(const ItemLocation& item, const std::string& path) {
  Ancestors ancestors;
  FileDescriptor folder = openFolder(item.folder, ".", O_PATH);
  if (!folder) return SystemError::fromErrno(errno, path);
  Result<ItemIdentity> identity = identityOf(folder, "", path);
  while (identity) {
    ancestors.all.push_back(identity.value());
    FileDescriptor above = openFolder(folder, "..", O_PATH);
    if (!above) return SystemError::fromErrno(errno, path);
    identity = identityOf(above, "", path);
    // The parent of the root is the root.
    const bool isTop = identity && (identity.value().mount != ancestors.all.back().mount ||
                                    identity.value().isSameItem(ancestors.all.back()));
    if (isTop) {
      ancestors.top = std::move(folder);
      return ancestors;
    }
    folder = std::move(above);
  }
  return identity.error();
}

// Whether the folder `path`, or the nearest existing folder above it, is on `mount`. An error if
// that cannot be determined: choosing the wrong Trash would hide the item from the user.
Result<bool> liesOn(std::uint64_t mount, std::string path) {
  while (true) {
    if (const FileDescriptor folder = openPath(path)) {
      const Result<ItemIdentity> identity = identityOf(folder, "", path);
      if (!identity) return identity.error();
      return identity.value().mount == mount;
    }
    if ((errno != ENOENT && errno != ENOTDIR) || path.size() <= 1) {
      return SystemError::fromErrno(errno, path);
    }
    const std::size_t slash = path.rfind('/');
    path.resize(slash == std::string::npos ? 0 : std::max<std::size_t>(slash, 1));
  }
}

class Search {
 public:
  Search(const ItemLocation& item, const std::string& path, const TrashConfig& config)
      : item_(item), path_(path), homeTrash_(config.homeTrash), config_(config) {}

  Result<TrashFolder> run() {
    const Result<ItemIdentity> self = identityOf(item_.folder, item_.name, path_);
    if (!self) return self.error();
    Result<Ancestors> ancestors = ancestorsOf(item_, path_);
    if (!ancestors) return ancestors.error();
    mount_ = ancestors.value().all.front().mount;
    if (self.value().mount != mount_) return SystemError::fromErrno(EBUSY, path_);
    const Result<std::string> folder = pathOf(item_.folder, path_);
    if (!folder) return folder.error();
    const Result<std::string> top = pathOf(ancestors.value().top, path_);
    if (!top) return top.error();
    const std::string absolute = below(folder.value(), item_.name);
    const std::string prefix = below(top.value(), "");
    // A folder above the item was moved just now.
    if (!absolute.starts_with(prefix)) return SystemError::fromErrno(ESTALE, path_);
    const std::string relative = absolute.substr(prefix.size());
    if (VolumeTrash::isName(relative.substr(0, relative.find('/')))) return inTrash();
    if (const Outcome free = holdsNoMount(below(absolute, "")); !free) return free.error();

    const Result<bool> home = liesOn(mount_, homeTrash_);
    if (!home) return home.error();
    const bool isHome = home.value();
    const FileDescriptor trash =
        isHome ? openHome() : openAtTop(ancestors.value().top, top.value());
    if (!trash) return SystemError::fromErrno(errno, trashPath_);
    const Result<ItemIdentity> identity = identityOf(trash, "", trashPath_);
    if (!identity) return identity.error();
    std::vector<ItemIdentity>& all = ancestors.value().all;
    all.push_back(self.value());
    const auto isTrash = [&](const ItemIdentity& one) { return one.isSameItem(identity.value()); };
    if (std::any_of(all.begin(), all.end(), isTrash)) return inTrash();
    TrashFolder found{.files = VolumeTrash::openOrMakeFolder(trash, "files"),
                      .info = FileDescriptor(),
                      .path = trashPath_,
                      .itemPath = isHome ? absolute : relative,
                      .isHome = isHome};
    if (found.files) found.info = VolumeTrash::openOrMakeFolder(trash, "info");
    if (!found.info) return SystemError::fromErrno(errno, trashPath_);
    if (isHome) {
      Result<std::string> real = pathOf(trash, trashPath_);
      if (!real) return real.error();
      found.path = std::move(real).value();
    }
    return found;
  }

 private:
  static std::string below(const std::string& folder, const std::string& name) {
    return folder.ends_with('/') ? folder + name : folder + "/" + name;
  }

  SystemError inTrash() const { return SystemError::fromErrno(EINVAL, path_); }

  // Its file systems would move into the Trash with the folder, and emptying the Trash would then
  // delete a whole disk.
  Outcome holdsNoMount(const std::string& inside) const {
    const Result<std::vector<Mount>> table = readMounts(config_.mountinfo);
    if (!table) return table.error();
    const std::vector<Mount>& mounts = table.value();
    const auto isInside = [&](const Mount& mount) { return mount.point.starts_with(inside); };
    if (std::none_of(mounts.begin(), mounts.end(), isInside)) return succeeded();
    return SystemError::fromErrno(EBUSY, path_);
  }

  // It may be a link, which only the user can have created.
  FileDescriptor openHome() {
    trashPath_ = homeTrash_;
    FileDescriptor folder = openPath(homeTrash_);
    if (folder || errno != ENOENT) return folder;
    if (const Outcome made = makeFolders(homeTrash_); !made) {
      errno = made.error().code;
      return FileDescriptor();
    }
    return openPath(homeTrash_);
  }

  FileDescriptor openAtTop(const FileDescriptor& top, const std::string& topPath) {
    UserTrashFolder trash = VolumeTrash::findOrMake(top, topPath, config_.user);
    trashPath_ = std::move(trash.path);
    return std::move(trash.folder);
  }

  const ItemLocation& item_;
  const std::string& path_;
  const std::string& homeTrash_;
  const TrashConfig& config_;
  std::uint64_t mount_ = 0;
  std::string trashPath_;
};

}  // namespace

Result<TrashFolder> trashFolderFor(const ItemLocation& item, const std::string& path,
                                   const TrashConfig& config) {
  return Search(item, path, config).run();
}

}  // namespace tessaly
