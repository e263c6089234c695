// One tile of a treemap. A plain value that owns its node.
#pragma once

#include <cstdint>

#include "scan/DiskNode.h"
#include "treemap/Rect.h"

namespace tessaly {

// Identified in lists by node.path(), which is unique in a layout.
struct TreemapRect {
  DiskNode node;
  double x = 0;  // points of the canvas, after the gap between tiles
  double y = 0;
  double width = 0;
  double height = 0;
  std::int64_t depth = 0;       // 0 for a child of the node that was laid out, at most 3
  bool nested = false;          // contains the tiles of its children, below a header band
  std::int64_t parentSize = 0;  // stored size of the parent node, may be 0

  Rect rect() const { return {x, y, width, height}; }

  friend bool operator==(const TreemapRect&, const TreemapRect&) = default;
};

}  // namespace tessaly
