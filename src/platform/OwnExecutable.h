// Where the program that this process runs lies. Safe from any thread.
#pragma once

#include <string>

namespace tessaly {

// Absolute path as bytes, without links. When the file has been replaced since the start, the path
// of the new one. Empty where the system does not tell.
std::string ownExecutable();

// The rule behind it: what the system says of a file that was removed ends in " (deleted)", and so
// may a name.
std::string executableFrom(const std::string& told);

}  // namespace tessaly
