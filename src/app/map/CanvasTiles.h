// The tiles of one folder in the order in which they are painted. Plain values, rebuilt whole
// whenever something they depend on changes.
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
  // What colours and marks the tiles. Borrowed for the time of the call.
  struct State {
    const std::vector<BloatFilter>& filters;
    const std::set<std::string>& grewPaths;
    const std::set<std::string>& selected;
    bool heatmap = false;
  };

  CanvasTiles() = default;

  // The layout of the children of `node` on a canvas of `size` points: folders before what is in
  // them, siblings in the layout's order.
  CanvasTiles(const DiskNode& node, QSizeF size, const State& state);

  const std::vector<CanvasTile>& all() const { return tiles_; }
  const CanvasTile& operator[](std::size_t index) const { return tiles_[index]; }

  // The topmost tile at `point`.
  std::optional<std::size_t> at(QPointF point) const;

  // The nodes that a rubber band over the tiles selects, in the order of the tiles.
  std::vector<DiskNode> within(const Rect& band) const;

  // The tile of the item at `path`; only where there is none, that of the remainder of this path.
  std::optional<std::size_t> find(std::string_view path) const;

 private:
  std::vector<CanvasTile> tiles_;
};

}  // namespace tessaly
