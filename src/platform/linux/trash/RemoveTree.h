// Deletes a folder with all that is in it.
#pragma once

#include <string>
#include <sys/types.h>

#include "platform/SystemError.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/trash/ItemPlace.h"

namespace tessaly {

// Opens the permissions of `held`, open with O_PATH, for its owner, where that is `user` and where
// they are not open. Gives the permissions that were there.
mode_t openPermissions(const FileDescriptor& held, uid_t user);
void setPermissions(const FileDescriptor& held, mode_t permissions);

// Deletes the folder `name` in `above`, whose path is `path`, when it is `item`; else ESTALE. Links
// are deleted, never followed; of a file system mounted below nothing is touched. Folders of `user`
// that their permissions close are opened first. Gives the first error, after which as much as can
// be is deleted all the same. What vanishes meanwhile is no error, nor is a folder that is not
// there.
Outcome removeTree(const FileDescriptor& above, const std::string& name, const ItemIdentity& item,
                   const std::string& path, uid_t user);

}  // namespace tessaly
