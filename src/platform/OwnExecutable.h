// The executable of this process. Safe from any thread.
#pragma once

#include <string>

namespace tessaly {

// Absolute path as bytes, without links. If the file has been replaced or removed since the start,
// its former path. Empty if the system does not report it.
std::string ownExecutable();

// The rule behind it on Linux: `told` is the text of the system's link to `executable`, to which
// the system appends " (deleted)" when the file has been removed.
std::string executableFrom(std::string told, const std::string& executable);

}  // namespace tessaly
