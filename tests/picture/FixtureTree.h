// The home folder of somebody who writes programs and takes pictures, as a scan leaves it behind.
#pragma once

#include "scan/DiskNode.h"

namespace tessaly {

inline constexpr const char* fixtureHome = "/home/ada";

DiskNode fixtureTree();

}  // namespace tessaly
