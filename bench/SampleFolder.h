// A folder whose map is full of tiles, four levels deep and with names of several scripts. The same
// seed always gives the same folder.
#pragma once

#include "scan/DiskNode.h"

namespace tessaly::bench {

// With 30 children per folder it has a quarter of a million nodes, with 24 about 100,000.
DiskNode sampleFolder(unsigned seed, int children = 30);

// The number of nodes, including the folder itself.
std::size_t nodeCount(const DiskNode& node);

}  // namespace tessaly::bench
