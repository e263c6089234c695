// Divides the bytes of a tree among the kinds. Pure, safe from any thread.
#pragma once

#include <cstdint>
#include <vector>

#include "scan/DiskNode.h"
#include "scan/FileKind.h"

namespace tessaly {

// The share of one kind, identified by the kind.
struct KindSlice {
  FileKind kind = FileKind::other;
  std::int64_t bytes = 0;
  double fraction = 0;  // share of the bytes of all kinds, 0 to 1

  friend bool operator==(const KindSlice&, const KindSlice&) = default;
};

namespace KindBreakdown {

// One slice for each kind with at least one byte below `node`, largest first, equal ones in the
// order of the kinds. Counts files, apps as a whole, and folders without children in the tree; not
// `node` itself. Bytes of items without a node, in a folder with children, are in no slice, so the
// slices can add up to less than the node's size.
std::vector<KindSlice> slices(const DiskNode& node);

}  // namespace KindBreakdown

}  // namespace tessaly
