// Location of an item, held by a descriptor of its folder: whatever is renamed or linked above it
// later, this folder is used.
#pragma once

#include <cstdint>
#include <string>
#include <sys/types.h>

#include "platform/SystemError.h"
#include "platform/linux/FileDescriptor.h"

namespace tessaly {

// The numbers by which the system knows a file or folder.
struct ItemIdentity {
  std::uint32_t deviceMajor = 0;
  std::uint32_t deviceMinor = 0;
  std::uint64_t inode = 0;
  std::uint64_t mount = 0;  // of the mount that it was reached through

  bool isSameItem(const ItemIdentity& other) const {
    return deviceMajor == other.deviceMajor && deviceMinor == other.deviceMinor &&
           inode == other.inode;
  }
  bool isSameLocation(const ItemIdentity& other) const {
    return isSameItem(other) && mount == other.mount;
  }
};

struct ItemLocation {
  FileDescriptor folder;  // O_PATH
  std::string name;       // in the folder, never empty, "." or ".."
};

// Identity of the item itself, even if it is a link; the empty name means the folder. `path` is for
// errors. notSupported if the system does not identify mounts.
Result<ItemIdentity> identityOf(const FileDescriptor& folder, const std::string& name,
                                const std::string& path);

// The folder of the absolute `path` and its last component, without trailing slashes. The item
// itself need not exist. EINVAL for a path without a usable name, EBUSY for the root, ELOOP if a
// symbolic link is above the item.
Result<ItemLocation> locationOfItem(const std::string& path);

// The same, after creating the missing folders above the item.
Result<ItemLocation> locationForItem(const std::string& path);

// Holds the item itself, even if it is a link, by a descriptor (O_PATH) that does not open its
// content.
FileDescriptor holdItem(const FileDescriptor& folder, const std::string& name);

// Opens the folder `name` in another one with `flags`. A link of that name gives ENOTDIR.
FileDescriptor openFolder(const FileDescriptor& folder, const std::string& name, int flags);

// The absolute path of an open folder or a held item, without links. The system appends "
// (deleted)" if it no longer exists.
Result<std::string> pathOf(const FileDescriptor& folder, const std::string& path);

// Syncs changes of the folder's entries to disk. Does nothing for a folder that cannot be read, or
// whose file system does not support it.
void syncFolder(const FileDescriptor& folder);

}  // namespace tessaly
