// Reads a volume's figures from the result of statvfs(3). Pure, safe from any thread.
#pragma once

#include <sys/statvfs.h>

#include "platform/VolumeCapacity.h"

namespace tessaly {

// Sizes are in fragments. Space reserved for root is not available. A remote file system may report
// any number: a figure beyond 64 bits is absent.
VolumeCapacity capacityFrom(const struct statvfs& figures);

}  // namespace tessaly
