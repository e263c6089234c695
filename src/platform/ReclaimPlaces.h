// The locations of Places::reclaimPlaces for each system. Compiled on both.
#pragma once

#include <vector>

#include "platform/Places.h"

namespace tessaly {

std::vector<ReclaimPlace> macosReclaimPlaces();
std::vector<ReclaimPlace> linuxReclaimPlaces();

}  // namespace tessaly
