// Looks ahead whether a folder can be deleted with all in it, so that one that cannot stays whole.
#pragma once

#include <string>
#include <sys/types.h>

#include "platform/SystemError.h"
#include "platform/linux/FileDescriptor.h"

namespace tessaly {

// The first thing in the folder `name` in `above`, or itself, that `user` could not delete: what a
// file system is mounted on (EBUSY), what is marked as not to be changed (EPERM), what stands in a
// folder of others that the user may not change (EACCES), or on a file system that takes no changes
// (EROFS). Changes nothing, and so cannot look into a folder of the user's own that is closed: this
// one is taken on trust. `path` is that of the folder.
Outcome obstacleToDeleting(const FileDescriptor& above, const std::string& name,
                           const std::string& path, uid_t user);

}  // namespace tessaly
