#include "treemap/TreemapLayout.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <utility>

#include "platform/CheckedArithmetic.h"

namespace tessaly::TreemapLayout {

namespace {

constexpr double outerInset = 4;
constexpr double smallestUsable = 1;  // a rectangle is laid out only if both sides are larger than
                                      // this
constexpr double smallestTile = 5;
constexpr double gap = 1;
constexpr std::size_t mostTiles = 500;
constexpr std::size_t mostKids = 100;
constexpr double smallestShare = 0.001;
constexpr std::int64_t deepestNested = 2;
constexpr double smallestNestedWidth = 56;
constexpr double smallestNestedHeight = 44;
constexpr double sideInset = 2;

constexpr double worstPossible = std::numeric_limits<double>::max();

bool usable(const Rect& rect) {
  return rect.width > smallestUsable && rect.height > smallestUsable;
}

double positivePart(double length) {
  return length > 0 ? length : 0;
}

// A range of items that share one strip.
struct Row {
  std::size_t begin = 0;
  std::size_t end = 0;
  std::int64_t sum = 0;
  std::int64_t smallest = std::numeric_limits<std::int64_t>::max();
  std::int64_t largest = std::numeric_limits<std::int64_t>::min();

  bool empty() const { return begin == end; }

  Row with(std::int64_t size) const {
    return {begin, end + 1, checkedAdd(sum, size), std::min(smallest, size),
            std::max(largest, size)};
  }
};

// Cuts a rectangle into strips.
class Strips {
 public:
  Strips(std::span<const std::int64_t> sizes, const Rect& rect) : sizes_(sizes), left_(rect) {
    std::int64_t sum = 0;
    for (const std::int64_t size : sizes) sum = checkedAdd(sum, size);
    total_ = static_cast<double>(std::max<std::int64_t>(sum, 1));
  }

  // Calls place(index, rectangle) for each item in order, until it returns false.
  template <typename Place>
  void run(Place place) {
    Row row;
    double rowRatio = worstPossible;
    std::size_t next = 0;
    while (next < sizes_.size()) {
      const Row candidate = row.with(sizes_[next]);
      const double ratio = worst(candidate);
      if (row.empty() || ratio <= rowRatio) {
        row = candidate;
        rowRatio = ratio;
        ++next;
        continue;
      }
      if (!layoutRow(row, false, place)) return;
      row = Row{next, next};
    }
    if (!row.empty()) layoutRow(row, true, place);
  }

 private:
  bool vertical() const { return left_.height <= left_.width; }
  double length() const { return std::min(left_.width, left_.height); }

  double thickness(const Row& row, double length) const {
    return static_cast<double>(row.sum) / total_ * (left_.width * left_.height) / length;
  }

  static double share(std::int64_t size, const Row& row, double length) {
    return length * (static_cast<double>(size) / static_cast<double>(row.sum));
  }

  // The worst aspect ratio in the row, squared. Rounding keeps the order of numbers that are
  // multiplied or divided by a positive one, so the extreme sizes give the extreme shares, and the
  // row need not be searched.
  double worst(const Row& row) const {
    const double along = length();
    if (row.sum < 1 || along <= 0) return worstPossible;
    const double across = thickness(row, along);
    if (across <= 0) return worstPossible;
    const double longest = share(row.largest, row, along);
    const double shortest = share(row.smallest, row, along);
    return std::max((longest * longest) / (across * across),
                    (across * across) / (shortest * shortest));
  }

  template <typename Place>
  bool layoutRow(const Row& row, bool fill, Place& place) {
    const bool upright = vertical();
    const double along = length();
    const double whole = upright ? left_.width : left_.height;
    const double across = fill ? whole : along > 0 ? thickness(row, along) : 0;
    const double width = positivePart(across);
    double offset = 0;
    for (std::size_t index = row.begin; index < row.end; ++index) {
      const double extent = row.sum < 1 ? 0 : share(sizes_[index], row, along);
      const double height = positivePart(extent);
      const Rect rect = upright ? Rect{left_.x, left_.y + offset, width, height}
                                : Rect{left_.x + offset, left_.y, height, width};
      if (!place(index, rect)) return false;
      offset += extent;
    }
    if (upright) {
      left_.x += across;
      left_.width = positivePart(left_.width - across);
    } else {
      left_.y += across;
      left_.height = positivePart(left_.height - across);
    }
    return true;
  }

  std::span<const std::int64_t> sizes_;
  Rect left_;
  double total_ = 1;
};

// The largest children of a node, largest first, equal ones in stored order. Children are mostly
// stored in that order, so inserting one rarely moves another.
class LargestKids {
 public:
  using Iterator = DiskNode::Children::Iterator;

  void add(std::int64_t size, Iterator kid) {
    if (count_ == mostKids && size <= sizes_[count_ - 1]) return;
    std::size_t at = count_ < mostKids ? count_++ : count_ - 1;
    for (; at > 0 && sizes_[at - 1] < size; --at) {
      sizes_[at] = sizes_[at - 1];
      kids_[at] = kids_[at - 1];
    }
    sizes_[at] = size;
    kids_[at] = kid;
  }

  std::span<const std::int64_t> sizes() const { return {sizes_.data(), count_}; }
  DiskNode node(std::size_t position) const { return *kids_[position]; }

 private:
  std::size_t count_ = 0;
  std::array<std::int64_t, mostKids> sizes_;
  std::array<Iterator, mostKids> kids_;
};

bool opens(const DiskNode& node, std::int64_t depth, const Rect& tile) {
  return depth <= deepestNested && tile.width >= smallestNestedWidth &&
         tile.height >= smallestNestedHeight && node.isDir() && !node.children().empty();
}

void layoutChildren(const DiskNode& parent, const Rect& rect, std::int64_t depth,
                    std::vector<TreemapRect>& out) {
  if (out.size() >= mostTiles) return;
  if (rect.width < smallestTile || rect.height < smallestTile) return;

  const std::int64_t parentSize = parent.size();
  const auto divisor = static_cast<double>(std::max<std::int64_t>(parentSize, 1));
  const DiskNode::Children children = parent.children();
  LargestKids kids;
  for (auto kid = children.begin(); kid != children.end(); ++kid) {
    const std::int64_t size = (*kid).size();
    if (size <= 0) continue;
    if (depth >= 1 && static_cast<double>(size) / divisor < smallestShare) continue;
    kids.add(size, kid);
  }

  Strips(kids.sizes(), rect).run([&](std::size_t position, const Rect& placed) {
    if (out.size() >= mostTiles) return false;
    const Rect tile = {placed.x + gap, placed.y + gap, positivePart(placed.width - 2 * gap),
                       positivePart(placed.height - 2 * gap)};
    if (tile.width < smallestTile || tile.height < smallestTile) return true;

    DiskNode node = kids.node(position);
    const bool nested = opens(node, depth, tile);
    out.push_back(
        {std::move(node), tile.x, tile.y, tile.width, tile.height, depth, nested, parentSize});
    if (nested) {
      const Rect inner = {tile.x + sideInset, tile.y + headerBand,
                          positivePart(tile.width - 2 * sideInset),
                          positivePart(tile.height - headerBand - sideInset)};
      // `out` has memory for all tiles, so this one does not move.
      layoutChildren(out.back().node, inner, depth + 1, out);
    }
    return true;
  });
}

}  // namespace

std::vector<TreemapRect> layout(const DiskNode& node, const Rect& rect) {
  if (!usable(rect)) return {};
  const Rect inset = {rect.x + outerInset, rect.y + outerInset, rect.width - 2 * outerInset,
                      rect.height - 2 * outerInset};
  if (!usable(inset)) return {};
  std::vector<TreemapRect> out;
  out.reserve(mostTiles);
  layoutChildren(node, inset, 0, out);
  return out;
}

std::vector<TreemapRect> squarify(const std::vector<DiskNode>& items, const Rect& rect) {
  if (items.empty() || !usable(rect)) return {};

  std::vector<const DiskNode*> list;
  for (const DiskNode& item : items) {
    if (item.size() > 0) list.push_back(&item);
  }
  if (list.empty()) {
    for (const DiskNode& item : items) list.push_back(&item);
  }
  std::vector<std::int64_t> sizes;
  sizes.reserve(list.size());
  for (const DiskNode* item : list) sizes.push_back(item->size());

  std::vector<TreemapRect> out;
  out.reserve(list.size());
  Strips(sizes, rect).run([&](std::size_t position, const Rect& placed) {
    out.push_back({*list[position], placed.x, placed.y, placed.width, placed.height, 0, false, 0});
    return true;
  });
  return out;
}

}  // namespace tessaly::TreemapLayout
