// A tree of 40,000 nodes like that of a scanned home folder: full of folders, partly deep. Made
// from a fixed seed, always the same.
#pragma once

#include <string>

#include "scan/DiskNode.h"

namespace tessaly::bench {

constexpr int sampleNodes = 40000;
constexpr int mostChildren = 80;  // per folder

// With names made of these letters.
DiskNode sampleTree(const std::string& letters);

}  // namespace tessaly::bench
