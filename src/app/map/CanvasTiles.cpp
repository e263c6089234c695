#include "app/map/CanvasTiles.h"

#include <algorithm>
#include <utility>

#include "scan/Remainder.h"
#include "treemap/NodeTint.h"
#include "treemap/TreemapLayout.h"
#include "treemap/TreemapSelect.h"

namespace tessaly {

CanvasTiles::CanvasTiles(const DiskNode& node, QSizeF size, const State& state) {
  auto rects = TreemapLayout::layout(node, {0, 0, size.width(), size.height()});
  std::ranges::stable_sort(rects, {}, &TreemapRect::depth);
  tiles_.reserve(rects.size());
  const double now = NodeTint::presentTime();
  for (auto& rect : rects) {
    const Color tint =
        NodeTint::color(rect.node, state.filters, state.grewPaths, state.heatmap, now);
    const bool selected = !state.selected.empty() && state.selected.contains(rect.node.path()) &&
                          !isRemainder(rect.node);
    tiles_.push_back({std::move(rect), tint, selected});
  }
}

std::optional<std::size_t> CanvasTiles::at(QPointF point) const {
  for (std::size_t i = tiles_.size(); i-- > 0;) {
    const TreemapRect& rect = tiles_[i].rect;
    if (point.x() >= rect.x && point.x() < rect.x + rect.width && point.y() >= rect.y &&
        point.y() < rect.y + rect.height) {
      return i;
    }
  }
  return std::nullopt;
}

std::vector<DiskNode> CanvasTiles::within(const Rect& band) const {
  std::vector<TreemapRect> rects;
  rects.reserve(tiles_.size());
  for (const CanvasTile& tile : tiles_) rects.push_back(tile.rect);
  return TreemapSelect::hits(rects, band);
}

std::optional<std::size_t> CanvasTiles::find(std::string_view path) const {
  std::optional<std::size_t> remainder;
  for (std::size_t i = 0; i < tiles_.size(); ++i) {
    const DiskNode& node = tiles_[i].rect.node;
    if (node.path() != path) continue;
    if (!isRemainder(node)) return i;
    remainder = i;
  }
  return remainder;
}

}  // namespace tessaly
