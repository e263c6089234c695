// The tiles of one folder in painting order. A plain value, rebuilt completely when anything
// changes.
#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <QPointF>
#include <QSizeF>

#include "app/map/CanvasTile.h"
#include "scan/DiskNode.h"
#include "treemap/BloatFilter.h"
#include "treemap/Rect.h"

namespace tessaly {

class CanvasTiles {
 public:
  // What colours and marks the tiles. Used during the call only.
  struct State {
    const std::vector<BloatFilter>& filters;
    const std::set<std::string>& grewPaths;
    const std::set<std::string>& selected;
    bool heatmap = false;
  };

  CanvasTiles() = default;

  // The layout of the children of `node` on a canvas of `size` points: folders before their
  // contents, siblings in the order of the layout.
  CanvasTiles(const DiskNode& node, QSizeF size, const State& state);

  const std::vector<CanvasTile>& all() const { return tiles_; }
  const CanvasTile& operator[](std::size_t index) const { return tiles_[index]; }

  // The topmost tile at `point`.
  std::optional<std::size_t> at(QPointF point) const;

  // The nodes selected by a rubber band, in the order of the tiles.
  std::vector<DiskNode> within(const Rect& band) const;

  // The tile of the item at `path`; if there is none, that of a remainder with this path.
  std::optional<std::size_t> find(std::string_view path) const;

 private:
  std::vector<CanvasTile> tiles_;
};

}  // namespace tessaly
