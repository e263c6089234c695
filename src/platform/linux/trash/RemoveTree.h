// Deletes a folder with its contents.
#pragma once

#include <string>
#include <sys/types.h>

#include "platform/SystemError.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/trash/ItemLocation.h"

namespace tessaly {

// Adds the owner's permissions to `held`, open with O_PATH, if `user` is its owner and they are
// missing. Returns the previous permissions.
mode_t openPermissions(const FileDescriptor& held, uid_t user);
void setPermissions(const FileDescriptor& held, mode_t permissions);

// Deletes the folder `name` in `above`, whose path is `path`, if it is `item`; else ESTALE. Links
// are deleted, never followed; mounts below are not touched. Folders of `user` without permissions
// get them first. Returns the first error, after which it still deletes as much as possible.
// Entries that vanish meanwhile are no error, nor is a missing folder.
Outcome removeTree(const FileDescriptor& above, const std::string& name, const ItemIdentity& item,
                   const std::string& path, uid_t user);

}  // namespace tessaly
