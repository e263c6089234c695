// A folder within a folder of a Trash: "files", "info" or "expunged".
#pragma once

#include <string>
#include <sys/types.h>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/trash/UserTrashFolders.h"

namespace tessaly {

struct TrashPart {
  FileDescriptor folder;  // open for reading; closed if there is none
  int code = 0;           // reason as an errno: ENOENT, ENOTDIR if another item has the name, EBUSY
                          // if a file system is mounted there
  bool isMissing() const { return code == ENOENT; }
  bool hasFailed() const { return code != 0 && code != ENOENT && code != ENOTDIR; }
};

// Never follows a link. Permanently opens the permissions of a folder of `user`.
TrashPart openTrashPart(const UserTrashFolder& trash, const std::string& name, uid_t user);

}  // namespace tessaly
