// Where an item stands, held fast by a descriptor of its folder: whatever is renamed or linked on
// the way there meanwhile, it is this folder that is meant.
#pragma once

#include <cstdint>
#include <string>
#include <sys/types.h>

#include "platform/SystemError.h"
#include "platform/linux/FileDescriptor.h"

namespace tessaly {

// One file or folder, by what the system knows it by.
struct ItemIdentity {
  std::uint32_t deviceMajor = 0;
  std::uint32_t deviceMinor = 0;
  std::uint64_t inode = 0;
  std::uint64_t mount = 0;  // of the mount that it was reached by

  bool isSameItem(const ItemIdentity& other) const {
    return deviceMajor == other.deviceMajor && deviceMinor == other.deviceMinor &&
           inode == other.inode;
  }
  bool isSamePlace(const ItemIdentity& other) const {
    return isSameItem(other) && mount == other.mount;
  }
};

struct ItemPlace {
  FileDescriptor folder;  // O_PATH
  std::string name;       // within it, never empty, "." or ".."
};

// Of the item itself, also where it is a link; the empty name stands for the folder. `path` is for
// the error. notSupported where the system does not tell mounts apart.
Result<ItemIdentity> identityOf(const FileDescriptor& folder, const std::string& name,
                                const std::string& path);

// The folder of the absolute `path` and its last component, without slashes at its end. The item
// itself need not be there. Refuses with EINVAL what cannot be meant, the root with EBUSY, and with
// ELOOP a path on which a symbolic link stands above the item.
Result<ItemPlace> placeOfItem(const std::string& path);

// The same, after the folders above the item that are missing have been made.
Result<ItemPlace> placeForItem(const std::string& path);

// The item itself, also where it is a link, held fast by a descriptor (O_PATH) that opens nothing.
FileDescriptor holdItem(const FileDescriptor& folder, const std::string& name);

// The folder `name` in another one, opened with `flags`. A link of that name is none (ENOTDIR).
FileDescriptor openFolder(const FileDescriptor& folder, const std::string& name, int flags);

// The absolute path of an open folder or a held item, without links. " (deleted)" stands behind
// that of one which is no more.
Result<std::string> pathOf(const FileDescriptor& folder, const std::string& path);

// Makes what was done in the folder last. A folder that may not be read, or whose file system
// cannot do that, is left to the system.
void syncFolder(const FileDescriptor& folder);

}  // namespace tessaly
