// Which copy of the program it is that runs.
#pragma once

#include <string>

namespace tessaly {

// The absolute path of the running program, as bytes, without links: its bundle where the system
// has bundles, else its executable. Where that file has been replaced or removed since the start,
// still the path at which it was. Empty when the system does not tell. Safe from any thread.
std::string runningApplicationPath();

// The rule behind it on Linux: `told` is the text of a link that leads to `executable`, to which
// the system adds a mark when the file has gone.
std::string runningApplicationPathFrom(std::string told, const std::string& executable);

}  // namespace tessaly
