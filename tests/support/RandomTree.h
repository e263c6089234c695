// Texts of trees with all that a scan tells apart, at random, the same for the same seed.
#pragma once

#include <cstdint>
#include <string>

#include "scan/DiskScanner.h"

namespace tessaly {

// A tree of about `items` lines in the form that TempTree builds.
std::string randomTree(std::uint64_t seed, int items);

// Exclusions that meet some of the names of a random tree built at `root`, or none of them.
DiskScanner::Options randomOptions(std::uint64_t seed, const std::string& root);

}  // namespace tessaly
