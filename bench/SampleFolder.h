// A folder whose map is full of tiles, four levels deep and with names of several scripts. The same
// for the same seed, each time.
#pragma once

#include "scan/DiskNode.h"

namespace tessaly::bench {

// Of 30 children a folder it has a quarter of a million nodes, of 24 some 100,000.
DiskNode sampleFolder(unsigned seed, int children = 30);

// How many nodes there are, the folder itself among them.
std::size_t nodeCount(const DiskNode& node);

}  // namespace tessaly::bench
