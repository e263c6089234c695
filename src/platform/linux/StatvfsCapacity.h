// Reads a volume's figures off what statvfs(3) filled in. Pure, safe from any thread.
#pragma once

#include <sys/statvfs.h>

#include "platform/VolumeCapacity.h"

namespace tessaly {

// Sizes are counted in fragments. What root alone may still use is not available. A file system may
// claim anything, one served by another machine above all: what exceeds 64 bits is left absent.
VolumeCapacity capacityFrom(const struct statvfs& figures);

}  // namespace tessaly
