// Distinguishes an item from another one that gets its name later.
#pragma once

#include <cstdint>
#include <string>
#include <sys/types.h>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/trash/ItemLocation.h"

namespace tessaly {

struct ItemMark {
  ItemIdentity identity;
  mode_t type = 0;  // S_IFREG and the like
  std::uint64_t size = 0;
  // Times are since 1970.
  std::int64_t changed = 0;      // content, in nanoseconds
  std::int64_t lastTouched = 0;  // content or attributes, in seconds
  std::int64_t born = 0;         // in nanoseconds; 0 if the file system does not report it
  // Some file systems assign a new inode number at each lookup.
  bool hasStableNumber = true;

  // Without a stable number, or without a creation time that shows whether a number was reused, the
  // size and the time of the content must be equal as well.
  bool isSameItem(const ItemMark& other) const;
  // The same item, and nothing was written to it.
  bool isUnchanged(const ItemMark& other) const;
};

// Marks the item itself, even if it is a link; the empty name means the folder. Returns 0, or an
// errno: ENOSYS if the system does not identify mounts.
int markOf(const FileDescriptor& folder, const std::string& name, ItemMark& mark);

}  // namespace tessaly
