// The home folder of somebody who writes programs and takes pictures, as a scan leaves it behind.
#pragma once

#include "scan/DiskNode.h"

namespace tessaly {

inline constexpr const char* fixtureHome = "/home/ada";

// Its items are as old as they are on any day: the map tells ages by the system's clock.
DiskNode fixtureTree();

}  // namespace tessaly
