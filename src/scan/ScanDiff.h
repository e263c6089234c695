// What changed between two trees: their top levels as sizes by path, and two such maps compared.
// Pure functions, safe from any thread.
//
// Maps may come from a damaged or a foreign file, so a difference that no 64-bit number holds does
// not end the program: it counts as the largest there is. It only says whether a path is listed and
// where; rows carry the sizes themselves.
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

// The size of `node`, which stands at `depth`, and of all below it down to the level `maxDepth`, by
// path. Of two nodes with one path, which no scan makes, the later one counts.
PathSizes flatten(const DiskNode& node, int depth, int maxDepth);

// The same, by the path relative to `root`.
PathSizes flattenRelative(const DiskNode& node, std::string_view root, int depth, int maxDepth);

// `path` as it is called below `root`, which may end in a slash: "." for the root itself, and the
// whole path for one that does not lie below it.
std::string relativeKey(std::string_view path, std::string_view root);

// The paths of `newer` that have grown by at least `minDelta` bytes, one that `older` does not have
// from 0. The largest growth comes first, and paths that grew alike are in the order of their
// bytes.
std::vector<ScanDelta> compare(const PathSizes& older, const PathSizes& newer,
                               std::int64_t minDelta);

// What differs by at least `minDelta` bytes between the two sides, and whatever has a size on one
// side only, however small. The largest difference comes first, and equal ones are in the order of
// the bytes of their paths.
std::vector<FolderCompareRow> compareFolders(const PathSizes& left, const PathSizes& right,
                                             std::int64_t minDelta);

}  // namespace tessaly::ScanDiff
