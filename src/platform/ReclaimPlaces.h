// The locations of Places::reclaimPlaces for each system. Compiled on both.
#pragma once

#include <string>
#include <vector>

#include "platform/Places.h"

namespace tessaly {

std::vector<ReclaimPlace> macosReclaimPlaces();
// `trash` is the absolute path of the user's Trash, if it is not the usual one in the home.
std::vector<ReclaimPlace> linuxReclaimPlaces(const std::string& trash = {});

}  // namespace tessaly
