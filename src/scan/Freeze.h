// The second phase of a scan: turns the accumulator into the pruned, immutable tree.
#pragma once

#include <string>

#include "scan/DiskNode.h"
#include "scan/NameSet.h"
#include "scan/ScanAccumulator.h"

namespace tessaly {

// Sorts children by size, largest first, and equal ones by the bytes of their names. Each directory
// keeps its 80 largest children and one last node for the rest. `important` names the folders that
// keep their small files.
DiskNode freeze(const ScanAccumulator& accumulator, const std::string& rootPath,
                const NameSet& important, bool expandPackages);

}  // namespace tessaly
