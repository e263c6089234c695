// The user's folders for the data and settings of programs. Safe from any thread while nobody
// changes the environment.
#pragma once

#include <string>

#include "platform/SystemError.h"

namespace tessaly {

// The folder in which each program has a folder of its own for its data. Absolute; not created.
std::string applicationSupportDirectory();

// The same for settings. Some systems use one folder for both.
std::string settingsDirectory();

// The rule for a folder of the XDG Base Directory Specification: `variable`, the value of the
// environment variable or null, counts only if it is an absolute path. Otherwise the folder is
// `usual`, a path below `home`. The result has no "/" at the end.
std::string baseDirectoryFrom(const char* variable, const std::string& home,
                              const std::string& usual);

// Creates the folder `path` and all missing folders above it, each for the user alone (0700).
// Succeeds if it already exists.
Outcome makeFolders(const std::string& path);

}  // namespace tessaly
