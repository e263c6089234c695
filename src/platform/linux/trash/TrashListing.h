// The contents of one Trash folder at the time of a request to empty it. An emptying deletes only
// what was listed, so items moved to the Trash after the request stay, even under a listed name.
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
    std::optional<ItemMark> record;  // record of its origin, in "info"
  };

  UserTrashFolder folder;
  std::vector<Item> items;           // in "files"
  std::vector<ListedEntry> orphans;  // names in "info" of records without an item
  std::vector<ListedEntry> remains;  // in "expunged": partly deleted items
  std::optional<ItemMark> expunged;  // an item that has this name instead of the folder
};

// The time, in seconds since 1970, by the clock with which the file system of `folder`, open for
// reading, sets file times. The clock of another machine may differ from the local one.
using FolderClock = std::function<std::int64_t(const FileDescriptor& folder)>;

// Makes the file system set the folder's time. If it does not, uses the clock of this machine.
std::int64_t clockOfFolder(const FileDescriptor& folder);

// Deletes nothing. A record changed within the last minute by `clock`, or with a time in the
// future, is no orphan: its item may not have been moved yet. Opens the permissions of the folders
// of `user` that it reads. Absent if nothing may be deleted, after an error that was added to
// `result`, like all others.
std::optional<TrashListing> listTrashFolder(UserTrashFolder trash, uid_t user,
                                            const FolderClock& clock, EmptiedTrash& result);

}  // namespace tessaly
