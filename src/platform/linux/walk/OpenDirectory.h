// Opens a directory by an absolute path of any length.
#pragma once

#include <string>

namespace tessaly::walk {

// A descriptor for reading the directory, or -1 with errno set. Links on the way are followed.
int openDirectory(const std::string& path);

}  // namespace tessaly::walk
