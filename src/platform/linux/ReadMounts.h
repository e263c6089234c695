// Reads the current list of mounts.
#pragma once

#include <string>
#include <vector>

#include "platform/SystemError.h"
#include "platform/linux/MountTable.h"

namespace tessaly {

// `path` is a list in the kernel's format, such as /proc/self/mountinfo.
Result<std::vector<Mount>> readMounts(const std::string& path);

}  // namespace tessaly
