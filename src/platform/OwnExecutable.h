// The executable of this process. Safe from any thread.
#pragma once

#include <string>

namespace tessaly {

// Absolute path as bytes, without links. If the file has been replaced since the start, the path of
// the new one. Empty if the system does not report it.
std::string ownExecutable();

// The rule behind it: the system appends " (deleted)" to the path of a removed file, but a file
// name may also end like that.
std::string executableFrom(const std::string& told);

}  // namespace tessaly
