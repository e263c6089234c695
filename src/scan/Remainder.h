// Remainders: nodes that stand for the many children of a folder for which its tree has no room.
// They are no items of the disk. Nothing can be done to one, and none is ever selected or queued.
#pragma once

#include "scan/DiskNode.h"

namespace tessaly {

// Whether `node` is one. Known by a path that ends in "__rest__" under another name, so that a file
// of the disk that is called "__rest__", or "+ 20 more", is an item like any other.
bool isRemainder(const DiskNode& node);

}  // namespace tessaly
