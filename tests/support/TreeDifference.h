// Finds where two scanned trees differ, for the message of a failed test.
#pragma once

#include <string>

#include "scan/DiskNode.h"

namespace tessaly {

// The first node in pre-order with a different field, and the field; "" if the trees are equal.
std::string differenceOf(const DiskNode& expected, const DiskNode& actual);

// The tree as lines, indented by two blanks per level: name, "/" for a directory, size, kind, time.
std::string treeText(const DiskNode& node);

}  // namespace tessaly
