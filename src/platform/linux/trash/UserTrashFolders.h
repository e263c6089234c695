// All folders that hold what a user has thrown away, after the freedesktop.org Trash specification
// 1.0: one in the user's data directory for the home, and those at the top of each other file
// system.
#pragma once

#include <string>
#include <vector>

#include "platform/SystemError.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/trash/TrashPlace.h"

namespace tessaly {

struct UserTrashFolder {
  FileDescriptor folder;  // O_PATH
  std::string path;       // absolute
};

struct UserTrashFolders {
  // Each once, though a file system may be mounted in many places; of these, one where something
  // can be changed is preferred.
  std::vector<UserTrashFolder> all;
  // What could not be looked at although a Trash may be there.
  std::vector<SystemError> errors;
};

// The home's own folder may be a link, since it is the user who put it there. At the top of a file
// system, where others may write too, only true folders serve: the user's in a shared ".Trash" that
// is sticky, and ".Trash-" with the number of the user; both must belong to the user. A file system
// that does not let the user look at its top has none.
UserTrashFolders userTrashFolders(const TrashPlace& place);

// Those of them in the home, and at the top of the file system mounted on `point`. Looking there
// may block for as long as that file system takes.
UserTrashFolders homeTrashFolder(const TrashPlace& place);
UserTrashFolders trashFoldersOn(const TrashPlace& place, const std::string& point);

}  // namespace tessaly
