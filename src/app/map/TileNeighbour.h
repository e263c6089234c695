// Which tile the arrow keys move to. Pure functions on the tiles of one folder.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "app/map/CanvasTile.h"
#include "treemap/Rect.h"
#include "treemap/TreemapRect.h"

namespace tessaly {

enum class TileDirection { left, right, up, down };

namespace TileNeighbour {

// The visible part of a tile itself, in points: all of it, or the header above its children.
Rect faceOf(const TreemapRect& rect);

// The neighbour of the tile at `index`: of the tiles whose faces are completely in that direction,
// the one nearest to the middle of its edge, where sideways distance counts as much as forward
// distance. Absent at the border of the canvas.
std::optional<std::size_t> of(const std::vector<CanvasTile>& tiles, std::size_t index,
                              TileDirection direction);

}  // namespace TileNeighbour

}  // namespace tessaly
