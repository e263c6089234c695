// Remainders: nodes that stand for the children of a folder beyond the limit of its tree. They are
// not items on disk, so no command applies to them, and they are never selected or queued.
#pragma once

#include "scan/DiskNode.h"

namespace tessaly {

// Whether `node` is a remainder: its path ends in "__rest__" and its name is a different one. So a
// file on disk that is called "__rest__", or "+ 20 more", is an item like any other.
bool isRemainder(const DiskNode& node);

}  // namespace tessaly
