// Opens a directory by an absolute path of any length.
#pragma once

#include <string>

namespace tessaly::walk {

// A descriptor for reading the directory, or -1 with errno set. Links in the path are followed, the
// last one too unless `flags` contain O_NOFOLLOW. Needs one descriptor; two for a path longer than
// the system accepts in one call.
int openDirectory(const std::string& path, int flags = 0);

}  // namespace tessaly::walk
