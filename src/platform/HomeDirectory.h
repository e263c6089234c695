// Where the user's own files lie. Safe from any thread.
#pragma once

#include <string>

namespace tessaly {

// Absolute path of the home directory, as bytes, with its symbolic links resolved: paths of a
// scanned tree are resolved too, and the two get compared as text. Found out once; later calls give
// the same answer, whatever happens to the environment. "/" for a user who has no home at all.
std::string homeDirectory();

// The rule behind it. `environment` is what $HOME holds, null where it is not set; it counts only
// when it is an absolute path. Otherwise `account`, the home of the account, is taken by the same
// rule. A path that leads nowhere is given back as it stands, without slashes at its end.
std::string homeDirectoryFrom(const char* environment, const std::string& account);

}  // namespace tessaly
