// The scanned home folder of a user who writes programs and takes pictures.
#pragma once

#include "scan/DiskNode.h"

namespace tessaly {

inline constexpr const char* fixtureHome = "/home/ada";

// The ages of its items do not depend on the date: their times are relative to the system's clock,
// which the map uses.
DiskNode fixtureTree();
// The same folder with a single file.
DiskNode fixtureTreeOfOne();

}  // namespace tessaly
