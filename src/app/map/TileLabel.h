// The text on a tile. Pure.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "scan/DiskNode.h"
#include "treemap/TreemapRect.h"

namespace tessaly {

struct TileLabel {
  std::string_view symbol;  // name of the symbol in front of the name
  std::string name;         // bytes, cut to the width of the tile
  int nameSize = 11;        // font size, in points
  double topPadding = 5;    // points
  std::string size;         // at the right end; empty if there is no space

  // Absent for a tile too small for a label.
  static std::optional<TileLabel> of(const TreemapRect& rect);

  // Space at the left and the right end of the label, in points.
  static constexpr double sidePadding = 6;

  // `name` cut to the number of characters for a tile of `width` points, with an ellipsis if any
  // are left out. Characters are those that a reader sees (grapheme clusters).
  static std::string shortened(std::string_view name, double width, bool besideSize);

  friend bool operator==(const TileLabel&, const TileLabel&) = default;
};

}  // namespace tessaly
