// Random texts of trees with everything that a scan distinguishes; the same for the same seed.
#pragma once

#include <cstdint>
#include <string>

#include "scan/DiskScanner.h"

namespace tessaly {

// A tree of about `items` lines in the format of TempTree.
std::string randomTree(std::uint64_t seed, int items);

// Exclusions that match some of the names in a random tree at `root`, or none.
DiskScanner::Options randomOptions(std::uint64_t seed, const std::string& root);

}  // namespace tessaly
