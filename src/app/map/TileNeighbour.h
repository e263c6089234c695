// Which tile the arrow keys lead to. Pure functions on the tiles of one folder.
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

// Where a tile can be seen itself, in points: all of it, or the band above the tiles that it holds.
Rect faceOf(const TreemapRect& rect);

// The tile that is next to the one at `index`: of those whose faces lie wholly in that direction,
// the one nearest to the middle of its edge, where going sideways counts as much as going ahead.
// None at the border of the canvas.
std::optional<std::size_t> of(const std::vector<CanvasTile>& tiles, std::size_t index,
                              TileDirection direction);

}  // namespace TileNeighbour

}  // namespace tessaly
