// Ways to a folder by an absolute path that no symbolic link may stand on.
//
// An empty descriptor after a failure, with errno set: ELOOP where there is a link, also at the end
// of the path. Descriptors are O_PATH.
#pragma once

#include <string>

#include "platform/linux/FileDescriptor.h"

namespace tessaly {

FileDescriptor openFolderPath(const std::string& path);

// The same; makes the folders that are missing, each in the one above that is held open.
FileDescriptor makeFolderPath(const std::string& path);

}  // namespace tessaly
