// Tells where two scanned trees differ, for the message of a failed test.
#pragma once

#include <string>

#include "scan/DiskNode.h"

namespace tessaly {

// The first node in pre-order with a field that differs, and the field; "" when all are equal.
std::string differenceOf(const DiskNode& expected, const DiskNode& actual);

// The tree as lines, two blanks of indent a level: name, "/" for a directory, size, kind, time.
std::string treeText(const DiskNode& node);

}  // namespace tessaly
