// What stands written on a tile. Pure.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "scan/DiskNode.h"
#include "treemap/TreemapRect.h"

namespace tessaly {

struct TileLabel {
  std::string_view symbol;  // name of the symbol in front of the name
  std::string name;         // bytes, cut to what the width of the tile allows
  int nameSize = 11;        // font size, in points
  double topPadding = 5;    // points
  std::string size;         // at the right end; empty where there is no room for it

  // Absent for a tile too small for a label.
  static std::optional<TileLabel> of(const TreemapRect& rect);

  // Space at the left and right end of the label, in points.
  static constexpr double sidePadding = 6;

  // `name` cut to the characters that a tile of `width` points allows, with an ellipsis when any
  // are left out. What a character is, is what a reader takes for one.
  static std::string shortened(std::string_view name, double width, bool besideSize);

  friend bool operator==(const TileLabel&, const TileLabel&) = default;
};

}  // namespace tessaly
