// The second phase of a scan: turns the accumulator into the pruned, immutable tree.
#pragma once

#include <string>

#include "scan/DiskNode.h"
#include "scan/NameSet.h"
#include "scan/ScanAccumulator.h"

namespace tessaly {

// Children are sorted by size, largest first, equal ones by the bytes of their names. Of each
// directory the 80 largest stay, and one node, always last, stands for the rest.
// `important` names the folders that keep their small files.
DiskNode freeze(const ScanAccumulator& accumulator, const std::string& rootPath,
                const NameSet& important, bool expandPackages);

}  // namespace tessaly
