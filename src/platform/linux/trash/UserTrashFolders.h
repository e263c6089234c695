// All Trash folders of a user, by the freedesktop.org Trash specification 1.0: one in the user's
// data directory for the home, and those at the top of each other file system.
#pragma once

#include <string>
#include <vector>

#include "platform/SystemError.h"
#include "platform/linux/trash/TrashConfig.h"
#include "platform/linux/trash/UserTrashFolder.h"

namespace tessaly {

struct UserTrashFolders {
  // Each folder once, even if its file system is mounted several times; a writable mount is
  // preferred.
  std::vector<UserTrashFolder> all;
  // Errors for folders that could not be examined although a Trash may be there.
  std::vector<SystemError> errors;
};

// The home's folder may be a link, since only the user can have created it. VolumeTrash.h says
// which folders count at the top of a file system. A file system whose top the user may not read
// has none.
UserTrashFolders userTrashFolders(const TrashConfig& config);

// The folder in the home, and those at the top of the file system mounted on `point`. The latter
// may block until that file system answers.
UserTrashFolders homeTrashFolder(const TrashConfig& config);
UserTrashFolders trashFoldersOn(const TrashConfig& config, const std::string& point);

}  // namespace tessaly
