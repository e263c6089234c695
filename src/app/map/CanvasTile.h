// A tile of the treemap with all that its picture depends on but the pointer.
#pragma once

#include "look/Color.h"
#include "treemap/TreemapRect.h"

namespace tessaly {

struct CanvasTile {
  TreemapRect rect;
  Color tint;
  bool selected = false;

  // Radius of its corners, in points.
  double radius() const { return rect.depth == 0 ? 8 : 5; }
};

}  // namespace tessaly
