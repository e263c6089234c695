// Differences between two trees: their top levels as sizes by path, and two such maps compared.
// Pure functions, safe from any thread.
//
// Maps may come from a damaged or foreign file, so a difference that does not fit 64 bits does not
// end the program: it counts as the largest one possible. It only decides whether and where a path
// is listed; rows carry the sizes themselves.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "scan/DiskNode.h"
#include "scan/FolderCompareRow.h"
#include "scan/PathSizes.h"
#include "scan/ScanDelta.h"

namespace tessaly::ScanDiff {

// The sizes by path of `node`, which is at level `depth`, and of its subtree down to level
// `maxDepth`. Of two nodes with the same path, which no scan makes, the later one counts.
PathSizes flatten(const DiskNode& node, int depth, int maxDepth);

// The same, by the path relative to `root`.
PathSizes flattenRelative(const DiskNode& node, std::string_view root, int depth, int maxDepth);

// The key of `path` relative to `root`, which may end in a slash: "." for the root itself, and the
// whole path if it is not below `root`.
std::string relativeKey(std::string_view path, std::string_view root);

// The paths of `newer` that have grown by at least `minDelta` bytes; a path that `older` does not
// have grew from 0. Sorted by growth, largest first, and equal growth by the bytes of the path.
std::vector<ScanDelta> compare(const PathSizes& older, const PathSizes& newer,
                               std::int64_t minDelta);

// The paths whose sizes differ by at least `minDelta` bytes, and all paths with a size on one side
// only, however small. Sorted by difference, largest first, and equal ones by the bytes of the
// path.
std::vector<FolderCompareRow> compareFolders(const PathSizes& left, const PathSizes& right,
                                             std::int64_t minDelta);

}  // namespace tessaly::ScanDiff
