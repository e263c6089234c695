#include "platform/linux/trash/EmptyTrashFolder.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <set>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "platform/linux/Uninterrupted.h"
#include "platform/linux/trash/FolderEntries.h"
#include "platform/linux/trash/ItemPlace.h"
#include "platform/linux/trash/MoveItem.h"
#include "platform/linux/trash/Obstacle.h"
#include "platform/linux/trash/RemoveTree.h"
#include "platform/linux/trash/TrashInfo.h"

namespace tessaly {

namespace {

const std::string expungedName = "expunged";

// 0, or an errno.
int remove(const FileDescriptor& folder, const std::string& name, int flags = 0) {
  const auto call = [&] { return ::unlinkat(folder.get(), name.c_str(), flags); };
  return uninterrupted(call) == 0 ? 0 : errno;
}

// Whether something is there: 0, or an errno.
int look(const FileDescriptor& folder, const std::string& name) {
  struct stat status {};
  return ::fstatat(folder.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 ? 0 : errno;
}

// The permissions of a folder of the user are open as long as this lives, or for good.
class OpenedPermissions {
 public:
  OpenedPermissions(const FileDescriptor& above, const std::string& name, uid_t user)
      : held_(openFolder(above, name, O_PATH)) {
    if (held_) before_ = openPermissions(held_, user);
  }
  OpenedPermissions(const OpenedPermissions&) = delete;
  OpenedPermissions& operator=(const OpenedPermissions&) = delete;
  ~OpenedPermissions() {
    if (held_ && (before_ & S_IRWXU) != S_IRWXU) setPermissions(held_, before_);
  }

  void keep() { before_ = S_IRWXU; }

 private:
  const FileDescriptor held_;
  mode_t before_ = S_IRWXU;
};

class Emptying {
 public:
  Emptying(const UserTrashFolder& trash, uid_t user, EmptiedTrash& result)
      : trash_(trash.folder), path_(trash.path), user_(user), result_(result) {}

  void run() {
    const Result<ItemIdentity> identity = identityOf(trash_, "", path_);
    if (!identity) return result_.addFailure(identity.error());
    mount_ = identity.value().mount;
    removeExpunged();
    info_ = openPart("info");
    // Read first: for what is recorded from now on, the item may still be on its way.
    std::set<std::string> records;
    if (info_) {
      const int code = forEachEntry(info_, [&](std::string_view name, unsigned char type) {
        if (type != DT_DIR && name.ends_with(TrashInfo::ending)) records.emplace(name);
      });
      noteError(code, "info");
    }
    files_ = openPart("files");
    if (files_) removeItems();
    if (info_ && (files_ || filesAreMissing_)) removeOrphans(records);
    remove(trash_, "directorysizes");
    remove(trash_, expungedName, AT_REMOVEDIR);
  }

 private:
  std::string pathOf(const std::string& part, const std::string& name) const {
    return path_ + "/" + part + "/" + name;
  }

  void noteError(int code, const std::string& part) {
    if (code != 0) result_.addFailure(SystemError::fromErrno(code, path_ + "/" + part));
  }

  // A true folder on the same mount; what else stands there is no part of a Trash.
  FileDescriptor openPart(const std::string& name) {
    const FileDescriptor held = openFolder(trash_, name, O_PATH);
    if (!held) {
      const int code = errno;
      const bool isMissing = code == ENOENT;
      if (name == "files") filesAreMissing_ = isMissing;
      if (!isMissing && code != ENOTDIR && code != ELOOP) noteError(code, name);
      return FileDescriptor();
    }
    const Result<ItemIdentity> identity = identityOf(held, "", "");
    if (!identity || identity.value().mount != mount_) {
      noteError(identity ? EBUSY : identity.error().code, name);
      return FileDescriptor();
    }
    openPermissions(held, user_);
    FileDescriptor part = openFolder(held, ".", O_RDONLY);
    if (!part) noteError(errno, name);
    return part;
  }

  // What an emptying that was ended, or another program, has left to be deleted.
  void removeExpunged() {
    const int code = remove(trash_, expungedName);
    if (code == 0 || code == ENOENT) return;
    const Outcome removed = removeTree(trash_, expungedName, path_ + "/" + expungedName, user_);
    if (!removed) result_.addFailure(removed.error());
  }

  void removeItems() {
    std::vector<std::string> folders;
    std::vector<std::string> others;
    const int code = forEachEntry(files_, [&](std::string_view name, unsigned char type) {
      (type == DT_DIR ? folders : others).emplace_back(name);
    });
    // First what needs no room: on a full disk it makes some.
    for (const std::string& name : others) {
      const int removed = remove(files_, name);
      if (removed == EISDIR) {
        folders.push_back(name);
      } else {
        finish(name, removed);
      }
    }
    for (const std::string& name : folders) {
      const int removed = remove(files_, name, AT_REMOVEDIR);
      if (removed == ENOTEMPTY || removed == EEXIST) {
        removeFolder(name);
      } else {
        finish(name, removed);
      }
    }
    noteError(code, "files");
  }

  // An item that was deleted in one step, or was not for the reason `code`.
  void finish(const std::string& name, int code) {
    if (code != 0) return fail(SystemError::fromErrno(code, pathOf("files", name)));
    removeRecord(name + std::string(TrashInfo::ending));
    ++result_.deleted;
  }

  // What somebody else has taken away is no failure.
  void fail(const SystemError& error) {
    if (error.code != ENOENT) result_.addFailure(error);
  }

  void removeRecord(const std::string& record) {
    const int code = info_ ? remove(info_, record) : 0;
    if (code != 0) fail(SystemError::fromErrno(code, pathOf("info", record)));
  }

  void removeFolder(const std::string& name) {
    const std::string path = pathOf("files", name);
    const Outcome isFree = obstacleToDeleting(files_, name, path, user_);
    if (!isFree) return fail(isFree.error());
    const Result<ItemIdentity> identity = identityOf(files_, name, path);
    if (!identity) return fail(identity.error());
    // A folder that is closed cannot be moved to another one.
    OpenedPermissions opened(files_, name, user_);
    const FileDescriptor expunged = openExpunged();
    const int obstacle = expunged ? EEXIST : errno;
    // Where there is no room for that folder, the item takes its place.
    const FileDescriptor& aside = expunged ? expunged : trash_;
    std::string asideName = expungedName;
    int code = EINTR;
    const int most = expunged ? mostRemains : 1;
    for (int attempts = 0; attempts < most && (code == EEXIST || code == EINTR); ++attempts) {
      if (expunged) asideName = std::to_string(++number_);
      code = moveItem({files_, name}, {aside, asideName}, identity.value());
    }
    if (code == EEXIST) code = obstacle;
    if (code != 0) return fail(SystemError::fromErrno(code, path));
    opened.keep();
    syncFolder(files_);
    removeRecord(name + std::string(TrashInfo::ending));
    std::string asidePath = path_ + "/" + expungedName;
    if (expunged) asidePath += "/" + asideName;
    const Outcome removed = removeTree(aside, asideName, asidePath, user_);
    if (!removed) return fail(removed.error());
    ++result_.deleted;
  }

  FileDescriptor openExpunged() const {
    ::mkdirat(trash_.get(), expungedName.c_str(), S_IRWXU);
    FileDescriptor folder = openFolder(trash_, expungedName, O_PATH);
    if (folder) openPermissions(folder, user_);
    return folder;
  }

  // Records without an item. Of those that are there now, only the ones that were there before.
  void removeOrphans(const std::set<std::string>& before) {
    std::vector<std::string> records;
    const int code = forEachEntry(info_, [&](std::string_view name, unsigned char) {
      if (before.contains(std::string(name))) records.emplace_back(name);
    });
    for (const std::string& record : records) {
      const std::string item = record.substr(0, record.size() - TrashInfo::ending.size());
      // Without the folder of items there is none; whether that is so is asked once more each time,
      // since much depends on it.
      const int looked = files_ ? look(files_, item) : look(trash_, "files");
      if (looked == ENOENT) {
        removeRecord(record);
      } else if (looked != 0) {
        noteError(looked, "info/" + record);
      }
    }
    noteError(code, "info");
  }

  // More than these in "expunged" are not stepped over.
  static constexpr int mostRemains = 100000;

  const FileDescriptor& trash_;
  const std::string& path_;
  const uid_t user_;
  EmptiedTrash& result_;
  std::uint64_t mount_ = 0;
  FileDescriptor files_;
  FileDescriptor info_;
  bool filesAreMissing_ = false;
  unsigned number_ = 0;  // of the last name given in "expunged"
};

}  // namespace

void emptyTrashFolder(const UserTrashFolder& trash, uid_t user, EmptiedTrash& result) {
  Emptying(trash, user, result).run();
}

}  // namespace tessaly
