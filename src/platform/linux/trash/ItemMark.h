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
  // When the content was last changed, in nanoseconds since 1970.
  std::int64_t changed = 0;
  // The later of that and of the last change to the attributes, in seconds since 1970.
  std::int64_t lastTouched = 0;
  // In nanoseconds since 1970; 0 where the file system does not tell.
  std::int64_t born = 0;
  // Some file systems number an item anew each time that it is looked up. There its size and the
  // time of its content stand for the number.
  bool hasStableNumber = true;

  bool isSameItem(const ItemMark& other) const;
  // The same, and nothing was written to it.
  bool isUnchanged(const ItemMark& other) const;
};

// Of the item itself, also where it is a link; the empty name stands for the folder. Gives 0, or an
// errno: ENOSYS where the system does not tell mounts apart.
int markOf(const FileDescriptor& folder, const std::string& name, ItemMark& mark);

}  // namespace tessaly
