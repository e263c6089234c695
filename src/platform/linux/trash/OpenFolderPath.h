// Opens a folder by an absolute path that must not contain symbolic links.
//
// Returns an empty descriptor after a failure, with errno set: ELOOP for a link, also at the end of
// the path. Descriptors are O_PATH.
#pragma once

#include <string>

#include "platform/linux/FileDescriptor.h"

namespace tessaly {

FileDescriptor openFolderPath(const std::string& path);

// The same; creates missing folders, each in the open folder above it.
FileDescriptor makeFolderPath(const std::string& path);

}  // namespace tessaly
