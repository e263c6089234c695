// Opens a folder by an absolute path of any length that must not contain symbolic links.
#pragma once

#include <string_view>

#include "platform/linux/FileDescriptor.h"

namespace tessaly {

// An O_PATH descriptor, or an empty one with errno set: ELOOP or ENOTDIR for a link.
FileDescriptor folderWithoutLinks(std::string_view path);

// The item at `path`, relative to `folder` unless it is absolute, with no link followed: ELOOP for
// a link, also at the end. ENOSYS if the system has no such call or forbids it. The path must be
// shorter than PATH_MAX. O_PATH.
FileDescriptor itemWithoutLinks(int folder, std::string_view path, int flags = 0);

}  // namespace tessaly
