#include "platform/linux/trash/TrashListing.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <set>
#include <string_view>
#include <sys/stat.h>
#include <utility>

#include "platform/linux/trash/FolderEntries.h"
#include "platform/linux/trash/TrashInfo.h"
#include "platform/linux/trash/TrashPart.h"

namespace tessaly {

namespace {

constexpr std::int64_t secondsOnTheWay = 60;

class Listing {
 public:
  Listing(UserTrashFolder trash, uid_t user, const FolderClock& clock, EmptiedTrash& result)
      : user_(user), clock_(clock), result_(result) {
    found_.folder = std::move(trash);
  }

  std::optional<TrashListing> run() {
    const Result<ItemIdentity> itself = identityOf(found_.folder.folder, "", found_.folder.path);
    if (!itself) {
      result_.addFailure(itself.error());
      return std::nullopt;
    }
    listRemains();
    const TrashPart info = open("info");
    // Read first: the item of a record written from now on may not have been moved yet.
    std::vector<std::string> records;
    if (info.folder) records = recordsIn(info.folder);
    const TrashPart files = open("files");
    std::set<std::string> names;
    const bool hasAllNames =
        files.folder ? listItems(files.folder, info.folder, names) : files.isMissing();
    // Without all names the records of items would seem to have none.
    if (info.folder && hasAllNames) {
      listOrphans(info.folder, std::move(records), names);
    }
    return std::move(found_);
  }

 private:
  void noteError(int code, const std::string& below) {
    if (code != 0) {
      result_.addFailure(SystemError::fromErrno(code, found_.folder.path + "/" + below));
    }
  }

  TrashPart open(const std::string& name) {
    TrashPart part = openTrashPart(found_.folder, name, user_);
    if (part.hasFailed()) noteError(part.code, name);
    return part;
  }

  // False for an entry that has vanished or cannot be examined.
  bool mark(const FileDescriptor& folder, const std::string& part, const std::string& name,
            ItemMark& found) {
    const int code = markOf(folder, name, found);
    if (code != 0 && code != ENOENT) noteError(code, part + "/" + name);
    return code == 0;
  }

  void listRemains() {
    const std::string name = "expunged";
    const TrashPart part = open(name);
    if (part.code == ENOTDIR) {
      ItemMark stranger;
      if (markOf(found_.folder.folder, name, stranger) == 0) found_.expunged = stranger;
    }
    if (!part.folder) return;
    const int code = forEachEntry(part.folder, [&](std::string_view entry, unsigned char) {
      ListedEntry remain{.name = std::string(entry), .mark = {}};
      if (mark(part.folder, name, remain.name, remain.mark)) {
        found_.remains.push_back(std::move(remain));
      }
    });
    noteError(code, name);
  }

  std::vector<std::string> recordsIn(const FileDescriptor& info) {
    std::vector<std::string> records;
    const int code = forEachEntry(info, [&](std::string_view name, unsigned char type) {
      if (type != DT_DIR && name.ends_with(TrashInfo::ending)) records.emplace_back(name);
    });
    noteError(code, "info");
    return records;
  }

  // False if the folder could not be read to its end.
  bool listItems(const FileDescriptor& files, const FileDescriptor& info,
                 std::set<std::string>& names) {
    const int code = forEachEntry(files, [&](std::string_view name, unsigned char) {
      names.emplace(name);
      TrashListing::Item item{.entry = {.name = std::string(name), .mark = {}}, .record = {}};
      if (!mark(files, "files", item.entry.name, item.entry.mark)) return;
      if (info && !markRecord(info, item)) return;
      found_.items.push_back(std::move(item));
    });
    noteError(code, "files");
    return code == 0;
  }

  // False if the record cannot be examined: deleting the item without it would leave the record
  // behind.
  bool markRecord(const FileDescriptor& info, TrashListing::Item& item) {
    const std::string name = item.entry.name + std::string(TrashInfo::ending);
    ItemMark record;
    const int code = markOf(info, name, record);
    if (code == 0) item.record = record;
    if (code == 0 || code == ENOENT) return true;
    noteError(code, "info/" + name);
    return false;
  }

  void listOrphans(const FileDescriptor& info, std::vector<std::string> records,
                   const std::set<std::string>& names) {
    std::erase_if(records, [&](const std::string& record) {
      return names.contains(record.substr(0, record.size() - TrashInfo::ending.size()));
    });
    if (records.empty()) return;
    const std::int64_t now = clock_(info);
    for (std::string& name : records) {
      ListedEntry orphan{.name = std::move(name), .mark = {}};
      if (!mark(info, "info", orphan.name, orphan.mark)) continue;
      const bool isYoung = orphan.mark.lastTouched > now - secondsOnTheWay;
      if (!isYoung) found_.orphans.push_back(std::move(orphan));
    }
  }

  const uid_t user_;
  const FolderClock& clock_;
  EmptiedTrash& result_;
  TrashListing found_;
};

}  // namespace

std::int64_t clockOfFolder(const FileDescriptor& folder) {
  struct stat status {};
  if (::futimens(folder.get(), nullptr) == 0 && ::fstat(folder.get(), &status) == 0) {
    // The earlier one, in case one of both comes from this machine: rather too few records count as
    // old.
    return std::min(status.st_mtim.tv_sec, status.st_ctim.tv_sec);
  }
  return std::time(nullptr);
}

std::optional<TrashListing> listTrashFolder(UserTrashFolder trash, uid_t user,
                                            const FolderClock& clock, EmptiedTrash& result) {
  return Listing(std::move(trash), user, clock, result).run();
}

}  // namespace tessaly
