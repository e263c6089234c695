// Runs the two scripts about the Trash, and no others.
#pragma once

#include <string>
#include <vector>

#include "platform/tools/Tools.h"

namespace tessaly::tools {

// `args` without the tool's own name: "-e" and a script, or "--help".
int osascript(const std::vector<std::string>& args, Streams streams, const Services& services);

}  // namespace tessaly::tools
