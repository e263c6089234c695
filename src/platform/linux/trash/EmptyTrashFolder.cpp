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
#include "platform/linux/trash/ItemLocation.h"
#include "platform/linux/trash/MoveItem.h"
#include "platform/linux/trash/Obstacle.h"
#include "platform/linux/trash/RemoveTree.h"
#include "platform/linux/trash/TrashInfo.h"
#include "platform/linux/trash/TrashPart.h"

namespace tessaly {

namespace {

const std::string expungedName = "expunged";

// Returns 0 or an errno.
int remove(const FileDescriptor& folder, const std::string& name, int flags = 0) {
  const auto call = [&] { return ::unlinkat(folder.get(), name.c_str(), flags); };
  return uninterrupted(call) == 0 ? 0 : errno;
}

// Returns 0 if the item exists, else an errno.
int look(const FileDescriptor& folder, const std::string& name) {
  struct stat status {};
  return ::fstatat(folder.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 ? 0 : errno;
}

// Returns 0 if the item of that name is the one that was listed, ENOENT if it is missing or another
// one, or another errno.
int lookAgain(const FileDescriptor& folder, const std::string& name, const ItemMark& listed) {
  ItemMark now;
  const int code = markOf(folder, name, now);
  return code == 0 && !listed.isSameItem(now) ? ENOENT : code;
}

// Opens the permissions of a folder of the user for the lifetime of the object, or permanently
// after keep().
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

  // Deletes the remains of an interrupted emptying, or of another program.
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
    // Held open, so that its inode number is not reused.
    const FileDescriptor held = openFolder(expunged, remain.name, O_PATH);
    int code = held ? lookAgain(held, "", remain.mark) : errno;
    if (code != 0) return SystemError::fromErrno(code, path);
    const Result<ItemIdentity> identity = identityOf(held, "", path);
    if (!identity) return identity.error();
    return removeTree(expunged, remain.name, identity.value(), path, user_);
  }

  void removeItems() {
    std::vector<const TrashListing::Item*> folders;
    // First the items that can be deleted without free space: on a full disk this makes some.
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

  // Completes an item that was deleted in one step, or could not be, with the error `code`.
  void finish(const TrashListing::Item& item, int code) {
    if (code != 0) return fail(SystemError::fromErrno(code, pathOf("files", item.entry.name)));
    removeRecord(item);
    ++result_.deleted;
  }

  // An item that another program has removed meanwhile is no failure.
  void fail(const SystemError& error) {
    if (error.code != ENOENT) result_.addFailure(error);
  }

  // Whether this emptying deleted the item: of two at the same time, which both may see a folder
  // moved away, only one finds the record.
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
      // Another emptying may have moved the folder away meanwhile; that is no failure.
      if (look(files_, name) != ENOENT) fail(isFree.error());
      return;
    }
    // Held open, so that its inode number is not reused.
    const FileDescriptor held = openFolder(files_, name, O_PATH);
    int code = held ? lookAgain(held, "", item.entry.mark) : errno;
    if (code != 0) return fail(SystemError::fromErrno(code, path));
    const Result<ItemIdentity> identity = identityOf(held, "", path);
    if (!identity) return fail(identity.error());
    // A folder without write permission cannot be moved to another folder.
    OpenedPermissions opened(held, user_);
    const Aside aside = moveAside(name, identity.value());
    if (aside.code != 0) return fail(SystemError::fromErrno(aside.code, path));
    const FileDescriptor& place = aside.expunged ? aside.expunged : trash_;
    // The move goes by name, so it may have moved another item.
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
    FileDescriptor expunged;  // closed if the item itself was moved to the name "expunged"
    std::string name;
    int code = 0;
  };

  Aside moveAside(const std::string& name, const ItemIdentity& identity) {
    // Another emptying may remove the folder when it no longer needs it.
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
    // Without space for that folder, the item itself gets its name.
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

  // To its old name, or to a numbered one if that is taken by now.
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
      // A record that was written again may belong to another item.
      if (code == 0 && !orphan.mark.isUnchanged(now)) continue;
      if (code == 0) {
        code = lookForItemOf(orphan.name);
        if (code == ENOENT) code = remove(info_, orphan.name);
      }
      if (code != 0) fail(SystemError::fromErrno(code, path));
    }
  }

  // ENOENT if the record has no item.
  int lookForItemOf(const std::string& record) {
    const std::string item = record.substr(0, record.size() - TrashInfo::ending.size());
    // If the folder "files" is missing, no item exists; this is checked again for each record,
    // since a wrong answer would lose records.
    return files_ ? look(files_, item) : look(trash_, "files");
  }

  // Limit for names in "expunged" that are already taken.
  static constexpr int mostRemains = 100000;

  const TrashListing& listing_;
  const FileDescriptor& trash_;
  const std::string& path_;
  const uid_t user_;
  EmptiedTrash& result_;
  FileDescriptor files_;
  FileDescriptor info_;
  unsigned number_ = 0;  // last number used as a name in "expunged"
};

}  // namespace

void emptyTrashFolder(const TrashListing& listing, uid_t user, EmptiedTrash& result) {
  Emptying(listing, user, result).run();
}

}  // namespace tessaly
