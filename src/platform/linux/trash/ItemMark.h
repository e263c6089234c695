// What tells an item from another one that takes its name later.
#pragma once

#include <cstdint>
#include <string>
#include <sys/types.h>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/trash/ItemPlace.h"

namespace tessaly {

struct ItemMark {
  ItemIdentity identity;
  mode_t type = 0;  // S_IFREG and the like
  std::uint64_t size = 0;
  // Times are since 1970.
  std::int64_t changed = 0;      // the content, in nanoseconds
  std::int64_t lastTouched = 0;  // the content or the attributes, in seconds
  std::int64_t born = 0;         // in nanoseconds; 0 where the file system does not tell
  // Some file systems number an item anew each time that it is looked up.
  bool hasStableNumber = true;

  // Where there is no stable number, or no birth to tell that a number was given again, the size
  // and the time of the content must be the same as well.
  bool isSameItem(const ItemMark& other) const;
  // The same, and nothing was written to it.
  bool isUnchanged(const ItemMark& other) const;
};

// Of the item itself, also where it is a link; the empty name stands for the folder. Gives 0, or an
// errno: ENOSYS where the system does not tell mounts apart.
int markOf(const FileDescriptor& folder, const std::string& name, ItemMark& mark);

}  // namespace tessaly
