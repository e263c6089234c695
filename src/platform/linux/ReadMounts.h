// The list of mounts as the system tells it at the moment.
#pragma once

#include <string>
#include <vector>

#include "platform/SystemError.h"
#include "platform/linux/MountTable.h"

namespace tessaly {

// `path` is that of the list in the kernel's form, such as /proc/self/mountinfo.
Result<std::vector<Mount>> readMounts(const std::string& path);

}  // namespace tessaly
