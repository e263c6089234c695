// The Trash folder for an item by the freedesktop.org Trash specification 1.0: that of the home for
// items on the same mount, else one at the top of the item's own mount. The mount of the item
// decides, not its device: renaming from one mount to another fails even if both show the same
// disk, and a part of a disk may report a device of its own without being mounted.
#pragma once

#include <string>

#include "platform/SystemError.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/trash/ItemLocation.h"
#include "platform/linux/trash/TrashConfig.h"

namespace tessaly {

struct TrashFolder {
  FileDescriptor files;
  FileDescriptor info;
  std::string path;      // absolute, without links
  std::string itemPath;  // path for the item's record: absolute in the Trash of the home, else
                         // relative to the top of the file system
  bool isHome = false;   // whether it is the Trash of the home
};

// Creates missing parts of it, for the user alone (0700). `path` is the item's, for errors.
//
// Refuses items that cannot be moved at all, a Trash and everything in it, and a folder that
// contains a mount point. VolumeTrash.h says which folders are used at the top of a file system.
Result<TrashFolder> trashFolderFor(const ItemLocation& item, const std::string& path,
                                   const TrashConfig& config);

}  // namespace tessaly
