// Figures and lists derived from a finished tree. Pure functions, safe from any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "scan/DiskNode.h"

namespace tessaly {

// Counts of one tree.
struct ScanStats {
  std::int64_t nodes = 0;    // all nodes, the root included
  std::int64_t files = 0;    // nodes that are not directories, remainder nodes included
  std::int64_t folders = 0;  // nodes that are directories, packages included
  double duration = 0;       // seconds the scan took; 0 for a tree that was not scanned in this run
  std::int64_t bytes = 0;    // size of the root

  friend bool operator==(const ScanStats&, const ScanStats&) = default;
};

namespace ScanInsights {

// The `limit` largest files at or below `root`, largest first, equal ones in walk order. Leaves out
// nodes named like a remainder. Empty for a limit below 1.
std::vector<DiskNode> largestFiles(const DiskNode& root, std::int64_t limit);

// Folders without a node below them: the first `limit` in walk order, sorted by the bytes of their
// paths. Never the root, a bundle, or a node named like a remainder. Such a folder may contain
// small files, which count in its size. Empty for a limit below 1.
std::vector<DiskNode> emptyFolders(const DiskNode& root, std::int64_t limit);

// The nodes from `from` down to the one at path `to`, both included; absent when the tree has no
// such node.
std::optional<std::vector<DiskNode>> chain(const DiskNode& from, std::string_view to);

// Counts `root` and its subtree; `duration`, in seconds, is copied.
ScanStats stats(const DiskNode& root, double duration);

}  // namespace ScanInsights

}  // namespace tessaly

template <>
struct std::hash<tessaly::ScanStats> {
  std::size_t operator()(const tessaly::ScanStats& stats) const {
    const std::hash<std::int64_t> countHash;
    std::size_t sum = countHash(stats.nodes);
    for (const std::int64_t count : {stats.files, stats.folders, stats.bytes}) {
      sum = sum * 31 + countHash(count);
    }
    return sum * 31 + std::hash<double>{}(stats.duration);
  }
};
