// What lies in one folder of a Trash when somebody asks for it to be emptied. An emptying takes
// what was listed and nothing else, so that what is thrown away after the asking stays, also under
// a name that was listed.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

#include "platform/TrashCan.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/trash/ItemMark.h"
#include "platform/linux/trash/UserTrashFolders.h"

namespace tessaly {

struct ListedEntry {
  std::string name;
  ItemMark mark;
};

struct TrashListing {
  struct Item {
    ListedEntry entry;
    std::optional<ItemMark> record;  // of where it came from, in "info"
  };

  UserTrashFolder folder;
  std::vector<Item> items;           // in "files"
  std::vector<ListedEntry> orphans;  // records without an item, names in "info"
  std::vector<ListedEntry> remains;  // in "expunged": of what was deleted for a part only
  std::optional<ItemMark> expunged;  // of what stands there in place of that folder
};

// The time by the clock that the file system of `folder`, open for reading, stamps files with; in
// seconds since 1970. That of another machine may differ from ours.
using FolderClock = std::function<std::int64_t(const FileDescriptor& folder)>;

// Asks the file system to stamp the folder. Where it does not, the clock of this machine.
std::int64_t clockOfFolder(const FileDescriptor& folder);

// Deletes nothing. A record that was touched within the last minute by `clock`, or is of a time to
// come, is no orphan: its item may still be on its way. Opens the permissions of the folders of
// `user` that it reads. Absent where nothing may be deleted, after an error that has been added to
// `result`, as are the others.
std::optional<TrashListing> listTrashFolder(UserTrashFolder trash, uid_t user,
                                            const FolderClock& clock, EmptiedTrash& result);

}  // namespace tessaly
