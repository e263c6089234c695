// Checks in advance whether a folder can be deleted with its contents, so that one that cannot be
// stays complete.
#pragma once

#include <string>
#include <sys/types.h>

#include "platform/SystemError.h"
#include "platform/linux/FileDescriptor.h"

namespace tessaly {

// The first item, in the folder `name` in `above` or that folder itself, that `user` could not
// delete: a mount point (EBUSY), an immutable item (EPERM), an entry of another user's folder that
// the user may not change (EACCES), or an item on a read-only file system (EROFS). Changes nothing,
// so it cannot look into a folder of the user's own without permissions: that one is assumed to be
// deletable. `path` is the path of the folder.
Outcome obstacleToDeleting(const FileDescriptor& above, const std::string& name,
                           const std::string& path, uid_t user);

}  // namespace tessaly
