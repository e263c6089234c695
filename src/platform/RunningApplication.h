// The path of the running copy of the program.
#pragma once

#include <string>

namespace tessaly {

// The absolute path of the running program, as bytes, without links: its bundle on systems with
// bundles, else its executable. If that file has been replaced or removed since the start, its
// former path. Empty if the system does not report it. Safe from any thread.
std::string runningApplicationPath();

// The rule behind it on Linux: `told` is the text of the system's link to `executable`, to which
// the system appends a mark when the file has been removed.
std::string runningApplicationPathFrom(std::string told, const std::string& executable);

}  // namespace tessaly
