#include "platform/linux/trash/EmptyTrashFolder.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "platform/linux/Uninterrupted.h"
#include "platform/linux/trash/ItemPlace.h"
#include "platform/linux/trash/MoveItem.h"
#include "platform/linux/trash/Obstacle.h"
#include "platform/linux/trash/RemoveTree.h"
#include "platform/linux/trash/TrashInfo.h"
#include "platform/linux/trash/TrashPart.h"

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

// 0 when the item of that name is the one that was listed, ENOENT also when it is another, or an
// errno.
int lookAgain(const FileDescriptor& folder, const std::string& name, const ItemMark& listed) {
  ItemMark now;
  const int code = markOf(folder, name, now);
  return code == 0 && !listed.isSameItem(now) ? ENOENT : code;
}

// A folder of the user whose permissions are open as long as this lives, or for good.
class OpenedPermissions {
 public:
  OpenedPermissions(const FileDescriptor& held, uid_t user)
      : held_(held), before_(openPermissions(held, user)) {}
  OpenedPermissions(const OpenedPermissions&) = delete;
  OpenedPermissions& operator=(const OpenedPermissions&) = delete;
  ~OpenedPermissions() {
    if ((before_ & S_IRWXU) != S_IRWXU) setPermissions(held_, before_);
  }

  void keep() { before_ = S_IRWXU; }

 private:
  const FileDescriptor& held_;
  mode_t before_;
};

class Emptying {
 public:
  Emptying(const TrashListing& listing, uid_t user, EmptiedTrash& result)
      : listing_(listing),
        trash_(listing.folder.folder),
        path_(listing.folder.path),
        user_(user),
        result_(result) {}

  void run() {
    removeRemains();
    const bool hasOrphans = !listing_.orphans.empty();
    const auto hasRecord = [](const TrashListing::Item& item) { return item.record.has_value(); };
    if (hasOrphans || std::any_of(listing_.items.begin(), listing_.items.end(), hasRecord)) {
      info_ = open("info");
    }
    if (hasOrphans || !listing_.items.empty()) files_ = open("files");
    if (files_) removeItems();
    if (info_) removeOrphans();
    remove(trash_, "directorysizes");
    remove(trash_, expungedName, AT_REMOVEDIR);
  }

 private:
  std::string pathOf(const std::string& part, const std::string& name) const {
    return path_ + "/" + part + "/" + name;
  }

  FileDescriptor open(const std::string& name) {
    TrashPart part = openTrashPart(listing_.folder, name, user_);
    if (part.hasFailed()) fail(SystemError::fromErrno(part.code, path_ + "/" + name));
    return std::move(part.folder);
  }

  // What an emptying that was ended, or another program, has left to be deleted.
  void removeRemains() {
    if (listing_.expunged && lookAgain(trash_, expungedName, *listing_.expunged) == 0) {
      const int code = remove(trash_, expungedName);
      if (code != 0) fail(SystemError::fromErrno(code, path_ + "/" + expungedName));
    }
    if (listing_.remains.empty()) return;
    const FileDescriptor expunged = open(expungedName);
    if (!expunged) return;
    for (const ListedEntry& remain : listing_.remains) {
      const Outcome removed = removeRemain(expunged, remain);
      if (!removed) fail(removed.error());
    }
  }

  Outcome removeRemain(const FileDescriptor& expunged, const ListedEntry& remain) {
    const std::string path = pathOf(expungedName, remain.name);
    if (!S_ISDIR(remain.mark.type)) {
      int code = lookAgain(expunged, remain.name, remain.mark);
      if (code == 0) code = remove(expunged, remain.name);
      return code == 0 ? succeeded() : Outcome(SystemError::fromErrno(code, path));
    }
    // Held, so that its number stays the same.
    const FileDescriptor held = openFolder(expunged, remain.name, O_PATH);
    int code = held ? lookAgain(held, "", remain.mark) : errno;
    if (code != 0) return SystemError::fromErrno(code, path);
    const Result<ItemIdentity> identity = identityOf(held, "", path);
    if (!identity) return identity.error();
    return removeTree(expunged, remain.name, identity.value(), path, user_);
  }

  void removeItems() {
    std::vector<const TrashListing::Item*> folders;
    // First what needs no room: on a full disk it makes some.
    for (const TrashListing::Item& item : listing_.items) {
      if (S_ISDIR(item.entry.mark.type)) {
        folders.push_back(&item);
      } else {
        finish(item, removeAtOnce(item, 0));
      }
    }
    for (const TrashListing::Item* const item : folders) {
      const int removed = removeAtOnce(*item, AT_REMOVEDIR);
      if (removed == ENOTEMPTY || removed == EEXIST) {
        removeFolder(*item);
      } else {
        finish(*item, removed);
      }
    }
  }

  int removeAtOnce(const TrashListing::Item& item, int flags) {
    const int code = lookAgain(files_, item.entry.name, item.entry.mark);
    return code == 0 ? remove(files_, item.entry.name, flags) : code;
  }

  // An item that was deleted in one step, or was not for the reason `code`.
  void finish(const TrashListing::Item& item, int code) {
    if (code != 0) return fail(SystemError::fromErrno(code, pathOf("files", item.entry.name)));
    removeRecord(item);
    ++result_.deleted;
  }

  // What somebody else has taken away is no failure.
  void fail(const SystemError& error) {
    if (error.code != ENOENT) result_.addFailure(error);
  }

  // Whether the item was this emptying's to take: of two at the same time, both of which may see a
  // folder moved away, one finds the record.
  bool removeRecord(const TrashListing::Item& item) {
    if (!info_ || !item.record) return true;
    const std::string record = item.entry.name + std::string(TrashInfo::ending);
    int code = lookAgain(info_, record, *item.record);
    if (code == 0) code = remove(info_, record);
    if (code != 0) fail(SystemError::fromErrno(code, pathOf("info", record)));
    return code != ENOENT;
  }

  void removeFolder(const TrashListing::Item& item) {
    const std::string& name = item.entry.name;
    const std::string path = pathOf("files", name);
    const Outcome isFree = obstacleToDeleting(files_, name, path, user_);
    if (!isFree) {
      // Another emptying that moves the folder away in between is none.
      if (look(files_, name) != ENOENT) fail(isFree.error());
      return;
    }
    // Held, so that its number stays the same.
    const FileDescriptor held = openFolder(files_, name, O_PATH);
    int code = held ? lookAgain(held, "", item.entry.mark) : errno;
    if (code != 0) return fail(SystemError::fromErrno(code, path));
    const Result<ItemIdentity> identity = identityOf(held, "", path);
    if (!identity) return fail(identity.error());
    // A folder that is closed cannot be moved to another one.
    OpenedPermissions opened(held, user_);
    const Aside aside = moveAside(name, identity.value());
    if (aside.code != 0) return fail(SystemError::fromErrno(aside.code, path));
    const FileDescriptor& place = aside.expunged ? aside.expunged : trash_;
    // By its name another one may have been moved.
    const Result<ItemIdentity> moved = identityOf(place, aside.name, path);
    if (!moved) return fail(moved.error());
    if (!moved.value().isSameItem(identity.value())) {
      return moveBack({place, aside.name}, name, moved.value());
    }
    opened.keep();
    syncFolder(files_);
    const bool isOurs = removeRecord(item);
    std::string asidePath = path_ + "/" + expungedName;
    if (aside.expunged) asidePath += "/" + aside.name;
    const Outcome removed = removeTree(place, aside.name, identity.value(), asidePath, user_);
    if (!removed) return fail(removed.error());
    if (isOurs) ++result_.deleted;
  }

  struct Aside {
    FileDescriptor expunged;  // empty where the item has taken the place of that folder
    std::string name;
    int code = 0;
  };

  Aside moveAside(const std::string& name, const ItemIdentity& identity) {
    // Another emptying may remove the folder once it has no use for it.
    constexpr int mostTimes = 16;
    Aside aside;
    for (int times = 0; times < mostTimes; ++times) {
      aside = tryToMoveAside(name, identity);
      if (aside.code != ENOENT || look(files_, name) != 0) break;
    }
    return aside;
  }

  Aside tryToMoveAside(const std::string& name, const ItemIdentity& identity) {
    Aside aside{.expunged = openExpunged(), .name = expungedName, .code = EINTR};
    const int obstacle = aside.expunged ? EEXIST : errno;
    // Where there is no room for that folder, the item takes its place.
    const FileDescriptor& place = aside.expunged ? aside.expunged : trash_;
    const int most = aside.expunged ? mostRemains : 1;
    for (int attempts = 0; attempts < most && (aside.code == EEXIST || aside.code == EINTR);
         ++attempts) {
      if (aside.expunged) aside.name = std::to_string(++number_);
      aside.code = moveItem({files_, name}, {place, aside.name}, identity);
    }
    if (aside.code == EEXIST) aside.code = obstacle;
    return aside;
  }

  // To its name, or to one beside it when that is taken by now.
  void moveBack(const ItemEnd& from, const std::string& name, const ItemIdentity& identity) {
    constexpr unsigned attempts = 1000;
    constexpr std::size_t longest = 255;
    int code = EEXIST;
    for (unsigned number = 1; number <= attempts && code == EEXIST; ++number) {
      code = moveItem(from, {files_, TrashInfo::nameFor(name, number, longest)}, identity);
    }
    if (code != 0) fail(SystemError::fromErrno(code, pathOf("files", name)));
  }

  FileDescriptor openExpunged() const {
    ::mkdirat(trash_.get(), expungedName.c_str(), S_IRWXU);
    FileDescriptor folder = openFolder(trash_, expungedName, O_PATH);
    if (folder) openPermissions(folder, user_);
    return folder;
  }

  void removeOrphans() {
    for (const ListedEntry& orphan : listing_.orphans) {
      const std::string path = pathOf("info", orphan.name);
      ItemMark now;
      int code = markOf(info_, orphan.name, now);
      // One that was written again may tell of another item.
      if (code == 0 && !orphan.mark.isUnchanged(now)) continue;
      if (code == 0) {
        code = lookForItemOf(orphan.name);
        if (code == ENOENT) code = remove(info_, orphan.name);
      }
      if (code != 0) fail(SystemError::fromErrno(code, path));
    }
  }

  // ENOENT where the record has no item.
  int lookForItemOf(const std::string& record) {
    const std::string item = record.substr(0, record.size() - TrashInfo::ending.size());
    // Without the folder of items there is none; whether that is so is asked once more each time,
    // since much depends on it.
    return files_ ? look(files_, item) : look(trash_, "files");
  }

  // More than these in "expunged" are not stepped over.
  static constexpr int mostRemains = 100000;

  const TrashListing& listing_;
  const FileDescriptor& trash_;
  const std::string& path_;
  const uid_t user_;
  EmptiedTrash& result_;
  FileDescriptor files_;
  FileDescriptor info_;
  unsigned number_ = 0;  // of the last name given in "expunged"
};

}  // namespace

void emptyTrashFolder(const TrashListing& listing, uid_t user, EmptiedTrash& result) {
  Emptying(listing, user, result).run();
}

}  // namespace tessaly
