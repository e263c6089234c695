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
// itself need not be there. Refuses with EINVAL what cannot be meant, and the root with EBUSY.
Result<ItemPlace> placeOfItem(const std::string& path);

// The same, with `name` to be looked up there.
FileDescriptor openFolder(const FileDescriptor& folder, const std::string& name, int flags);

// The absolute path of an open folder, without links.
Result<std::string> pathOf(const FileDescriptor& folder, const std::string& path);

// Makes what was done in the folder last. A folder that may not be read, or whose file system
// cannot do that, is left to the system.
void syncFolder(const FileDescriptor& folder);

// Makes the folders above the item at `path` as far as they are missing and can be made.
void makeFoldersAbove(const std::string& path);

}  // namespace tessaly
