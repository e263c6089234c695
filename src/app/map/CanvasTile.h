// A tile of the treemap with everything that affects its picture, except the pointer.
#pragma once

#include "look/Color.h"
#include "treemap/TreemapRect.h"

namespace tessaly {

struct CanvasTile {
  TreemapRect rect;
  Color tint;
  bool selected = false;

  // Radius of the corners, in points.
  double radius() const { return rect.depth == 0 ? 8 : 5; }
};

}  // namespace tessaly
