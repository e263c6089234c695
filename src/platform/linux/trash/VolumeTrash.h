// The folders at the top of a file system that may be a user's Trash there, after the
// freedesktop.org Trash specification 1.0.
//
// Others may write at the top too, so only real folders are used, never links: the user's folder in
// the shared ".Trash", and ".Trash-" plus the user's number. Both must belong to the user. The
// shared folder must be sticky, or users could replace each other's folders in it.
//
// `top` is the open folder at the top of the file system, and `path` its absolute path.
#pragma once

#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/trash/UserTrashFolder.h"

namespace tessaly::VolumeTrash {

// Those that exist, the shared one first.
std::vector<UserTrashFolder> find(const FileDescriptor& top, const std::string& path, uid_t user);

// The folder for new items: the first that can be used, created for the user alone (0700) if it is
// missing. The shared ".Trash" itself is never created. If no folder can be used, the descriptor is
// empty, errno is set, and the path is the last one tried.
UserTrashFolder findOrMake(const FileDescriptor& top, const std::string& path, uid_t user);

// Whether a folder of this name at the top of a file system is a Trash, of whatever user.
bool isName(std::string_view name);

// Opens the folder of that name, which must not be a link, and creates it if it is missing. Returns
// an empty descriptor, with errno set, if another item has the name.
FileDescriptor openOrMakeFolder(const FileDescriptor& parent, const std::string& name);

}  // namespace tessaly::VolumeTrash
