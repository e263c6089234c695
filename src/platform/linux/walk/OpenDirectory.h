// Opens a directory by an absolute path of any length.
#pragma once

#include <string>

namespace tessaly::walk {

// A descriptor for reading the directory, or -1 with errno set. Links on the way are followed, the
// last one too unless `flags` hold O_NOFOLLOW. Takes one descriptor; two for a path that is longer
// than the system takes at once.
int openDirectory(const std::string& path, int flags = 0);

}  // namespace tessaly::walk
