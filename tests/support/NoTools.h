// A system without tools.
#pragma once

#include <string>
#include <vector>

#include "system/Shell.h"

namespace tessaly {

inline std::string noTools(const std::string& path, const std::vector<std::string>&, double = 0) {
  throw ToolError("POSIX", 2, path + ": there are no tools here");
}

}  // namespace tessaly
