// How the bytes of a tree divide among the kinds. Pure, safe from any thread.
#pragma once

#include <cstdint>
#include <vector>

#include "scan/DiskNode.h"
#include "scan/FileKind.h"

namespace tessaly {

// The share of one kind; its identity is the kind.
struct KindSlice {
  FileKind kind = FileKind::other;
  std::int64_t bytes = 0;
  double fraction = 0;  // of the bytes of all kinds, 0 to 1

  friend bool operator==(const KindSlice&, const KindSlice&) = default;
};

namespace KindBreakdown {

// One slice for each kind that weighs at least a byte below `node`, largest first, equal ones in
// the order of the kinds. Counted are files, apps as a whole, and the folders that the tree stops
// at; `node` itself is not. Bytes that have no node of their own in a folder with children are in
// no slice, so the slices can add up to less than the node's size.
std::vector<KindSlice> slices(const DiskNode& node);

}  // namespace KindBreakdown

}  // namespace tessaly
