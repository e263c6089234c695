// What can be read off a finished tree. Pure functions, safe from any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "scan/DiskNode.h"

namespace tessaly {

// Counts of one tree.
struct ScanStats {
  std::int64_t nodes = 0;    // all nodes, the root included
  std::int64_t files = 0;    // nodes that are no directories, remainder nodes included
  std::int64_t folders = 0;  // nodes that are directories, packages included
  double duration = 0;       // seconds the scan took; 0 for a tree that was not scanned in this run
  std::int64_t bytes = 0;    // size of the root

  friend bool operator==(const ScanStats&, const ScanStats&) = default;
};

namespace ScanInsights {

// The nodes from `from` down to the one at path `to`, both included; absent when the tree has no
// such node.
std::optional<std::vector<DiskNode>> chain(const DiskNode& from, std::string_view to);

// Counts `root` and all below it; `duration` in seconds is taken over as it is.
ScanStats stats(const DiskNode& root, double duration);

}  // namespace ScanInsights

}  // namespace tessaly
