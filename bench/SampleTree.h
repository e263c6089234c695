// A tree of 40,000 nodes such as a scan of a home folder leaves behind: full of folders, deep in
// places. It is made from a fixed seed and is the same each time.
#pragma once

#include <string>

#include "scan/DiskNode.h"

namespace tessaly::bench {

constexpr int sampleNodes = 40000;
constexpr int mostChildren = 80;  // of a folder

// With names of these letters.
DiskNode sampleTree(const std::string& letters);

}  // namespace tessaly::bench
