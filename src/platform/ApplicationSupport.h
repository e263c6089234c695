// The user's folders for what programs keep. Safe from any thread as long as nobody changes the
// environment.
#pragma once

#include <string>

#include "platform/SystemError.h"

namespace tessaly {

// Where programs keep data of their own, each in a folder of its own name. Absolute; not made.
std::string applicationSupportDirectory();

// The same for settings. Some systems have one place for both.
std::string settingsDirectory();

// The rule by which a folder of the XDG Base Directory Specification is found: what the variable
// holds counts only when it is an absolute path; null stands for a variable that is not set.
// Otherwise it is `usual`, a path below `home`. Gives no "/" at the end.
std::string baseDirectoryFrom(const char* variable, const std::string& home,
                              const std::string& usual);

// Makes the folder `path` with all that is missing above it, each for the user alone (0700). All is
// well when it is there already.
Outcome makeFolders(const std::string& path);

}  // namespace tessaly
