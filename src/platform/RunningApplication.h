// The path of the running copy of the program.
#pragma once

#include <string>

namespace tessaly {

// The absolute path of the running program, as bytes, without links: its bundle on systems with
// bundles, else its executable (OwnExecutable.h). Empty if the system does not report it. Safe from
// any thread.
std::string runningApplicationPath();

}  // namespace tessaly
