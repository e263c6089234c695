// The user's home directory. Safe from any thread.
#pragma once

#include <string>

namespace tessaly {

// Absolute path of the home directory, as bytes, with symbolic links resolved: paths of a scanned
// tree are resolved too, and both are compared as text. Determined once; later calls return the
// same path, even if the environment changes. "/" for a user without a home.
std::string homeDirectory();

// The rule behind it. `environment` is the value of $HOME, or null; it counts only if it is an
// absolute path. Otherwise `account`, the home of the account, is used by the same rule. A path
// that does not exist is returned as it is, without slashes at its end.
std::string homeDirectoryFrom(const char* environment, const std::string& account);

}  // namespace tessaly
