#include "app/map/TileNeighbour.h"

#include <algorithm>

#include "treemap/TreemapLayout.h"

namespace tessaly::TileNeighbour {

namespace {

// The overlap of two edges, in points, that rounding may cause.
constexpr double tolerance = 0.01;

// A face relative to a direction: `from` to `to` along it, `low` to `high` across it.
struct Met {
  double from = 0;
  double to = 0;
  double low = 0;
  double high = 0;
};

Met metBy(const Rect& face, TileDirection direction) {
  const double right = face.x + face.width;
  const double bottom = face.y + face.height;
  switch (direction) {
    case TileDirection::left:
      return {-right, -face.x, face.y, bottom};
    case TileDirection::right:
      return {face.x, right, face.y, bottom};
    case TileDirection::up:
      return {-bottom, -face.y, face.x, right};
    case TileDirection::down:
      break;
  }
  return {face.y, bottom, face.x, right};
}

}  // namespace

Rect faceOf(const TreemapRect& rect) {
  Rect face = rect.rect();
  if (rect.nested) face.height = std::min(face.height, TreemapLayout::headerBand);
  return face;
}

std::optional<std::size_t> of(const std::vector<CanvasTile>& tiles, std::size_t index,
                              TileDirection direction) {
  const Met start = metBy(faceOf(tiles[index].rect), direction);
  const double aim = (start.low + start.high) / 2;
  std::optional<std::size_t> nearest;
  double shortest = 0;
  for (std::size_t i = 0; i < tiles.size(); ++i) {
    const Met other = metBy(faceOf(tiles[i].rect), direction);
    if (i == index || other.from < start.to - tolerance) continue;
    const double ahead = other.from - start.to;
    const double sideways = std::max({other.low - aim, aim - other.high, 0.0});
    if (nearest && ahead + sideways >= shortest) continue;
    nearest = i;
    shortest = ahead + sideways;
  }
  return nearest;
}

}  // namespace tessaly::TileNeighbour
