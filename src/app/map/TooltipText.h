// The texts of the tooltip of a tile.
#pragma once

#include <optional>
#include <string>

#include "treemap/TreemapRect.h"

namespace tessaly {

// Name and path are bytes, the other texts UTF-8.
struct TooltipText {
  std::string name;
  std::string size;
  std::string facts;               // kind, share of the parent, number of items
  std::optional<std::string> age;  // only while the map is coloured by age
  std::string path;

  // `now` is in seconds since 1970.
  static TooltipText of(const TreemapRect& rect, bool heatmap, double now);

  friend bool operator==(const TooltipText&, const TooltipText&) = default;
};

}  // namespace tessaly
