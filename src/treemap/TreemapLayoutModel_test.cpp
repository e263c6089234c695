// Compares the layout with a model of it that is as simple as possible: it copies lists, sums whole
// rows again for each item, and applies the rules one at a time. Both must agree in every bit of
// every number.

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "treemap/SampleTrees_test.h"
#include "treemap/TreemapLayout.h"

namespace tessaly {
namespace {

using testing_trees::Dice;
using testing_trees::files;
using testing_trees::randomFolder;
using testing_trees::randomSizes;

class Model {
 public:
  static std::vector<TreemapRect> squarify(const std::vector<DiskNode>& items, const Rect& rect) {
    if (items.empty() || !(rect.width > 1) || !(rect.height > 1)) return {};
    Model model;
    std::deque<DiskNode> list;
    for (const DiskNode& item : items) {
      if (item.size() > 0) list.push_back(item);
    }
    if (list.empty()) list.assign(items.begin(), items.end());
    std::int64_t sum = 0;
    for (const DiskNode& item : list) sum += item.size();
    model.total_ = std::max<std::int64_t>(1, sum);
    model.left_ = rect;

    std::vector<DiskNode> row;
    while (!list.empty()) {
      const DiskNode item = list.front();
      list.pop_front();
      std::vector<DiskNode> candidate = row;
      candidate.push_back(item);
      const double length = std::min(model.left_.width, model.left_.height);
      if (row.empty() || model.worst(candidate, length) <= model.worst(row, length)) {
        row = candidate;
      } else {
        list.push_front(item);
        model.layoutRow(row, false);
        row.clear();
      }
    }
    if (!row.empty()) model.layoutRow(row, true);
    return model.out_;
  }

  static std::vector<TreemapRect> layout(const DiskNode& node, const Rect& rect) {
    if (!(rect.width > 1) || !(rect.height > 1)) return {};
    const Rect inset = {rect.x + 4, rect.y + 4, rect.width - 8, rect.height - 8};
    if (!(inset.width > 1) || !(inset.height > 1)) return {};
    std::vector<TreemapRect> out;
    layoutChildren(node, inset, 0, out);
    return out;
  }

 private:
  static std::int64_t sumOf(const std::vector<DiskNode>& row) {
    std::int64_t sum = 0;
    for (const DiskNode& item : row) sum += item.size();
    return sum;
  }

  double worst(const std::vector<DiskNode>& row, double length) const {
    const std::int64_t rowSum = sumOf(row);
    if (rowSum < 1 || length <= 0) return std::numeric_limits<double>::max();
    const double thickness = (static_cast<double>(rowSum) / static_cast<double>(total_)) *
                             (left_.width * left_.height) / length;
    if (thickness <= 0) return std::numeric_limits<double>::max();
    double largest = 0;
    double smallest = std::numeric_limits<double>::max();
    for (const DiskNode& item : row) {
      const double share =
          length * (static_cast<double>(item.size()) / static_cast<double>(rowSum));
      if (share > largest) largest = share;
      if (share < smallest) smallest = share;
    }
    const double wide = (largest * largest) / (thickness * thickness);
    const double narrow = (thickness * thickness) / (smallest * smallest);
    return wide > narrow ? wide : narrow;
  }

  void layoutRow(const std::vector<DiskNode>& row, bool fill) {
    const std::int64_t rowSum = sumOf(row);
    const double w = left_.width;
    const double h = left_.height;
    const bool vertical = h <= w;
    const double length = vertical ? h : w;
    double thickness = 0;
    if (fill) {
      thickness = vertical ? w : h;
    } else if (length > 0) {
      thickness = (static_cast<double>(rowSum) / static_cast<double>(total_)) * (w * h) / length;
    }
    double offset = 0;
    for (const DiskNode& item : row) {
      double share = 0;
      if (rowSum >= 1) {
        share = length * (static_cast<double>(item.size()) / static_cast<double>(rowSum));
      }
      Rect rect = vertical ? Rect{left_.x, left_.y + offset, thickness, share}
                           : Rect{left_.x + offset, left_.y, share, thickness};
      if (rect.width < 0) rect.width = 0;
      if (rect.height < 0) rect.height = 0;
      out_.push_back({item, rect.x, rect.y, rect.width, rect.height, 0, false, 0});
      offset += share;
    }
    if (vertical) {
      left_.x += thickness;
      left_.width -= thickness;
      if (left_.width < 0) left_.width = 0;
    } else {
      left_.y += thickness;
      left_.height -= thickness;
      if (left_.height < 0) left_.height = 0;
    }
  }

  static void layoutChildren(const DiskNode& parent, const Rect& rect, std::int64_t depth,
                             std::vector<TreemapRect>& out) {
    if (out.size() >= 500) return;
    if (rect.width < 5 || rect.height < 5) return;
    const double divisor = static_cast<double>(std::max<std::int64_t>(parent.size(), 1));
    std::vector<DiskNode> kids;
    for (const DiskNode& child : parent.children()) {
      if (child.size() > 0) kids.push_back(child);
    }
    if (depth >= 1) {
      std::vector<DiskNode> kept;
      for (const DiskNode& kid : kids) {
        if (static_cast<double>(kid.size()) / divisor >= 0.001) kept.push_back(kid);
      }
      kids = kept;
    }
    std::stable_sort(kids.begin(), kids.end(),
                     [](const DiskNode& a, const DiskNode& b) { return a.size() > b.size(); });
    if (kids.size() > 100) kids.resize(100);
    if (kids.empty()) return;
    const std::vector<TreemapRect> placed = squarify(kids, rect);
    if (placed.empty()) return;
    for (TreemapRect tile : placed) {
      if (out.size() >= 500) return;
      tile.x += 1;
      tile.y += 1;
      tile.width -= 2;
      tile.height -= 2;
      if (tile.width <= 0) tile.width = 0;
      if (tile.height <= 0) tile.height = 0;
      if (tile.width < 5 || tile.height < 5) continue;
      tile.depth = depth;
      tile.nested = depth <= 2 && tile.node.isDir() && tile.node.children().size() >= 1 &&
                    tile.width >= 56 && tile.height >= 44;
      tile.parentSize = parent.size();
      out.push_back(tile);
      if (tile.nested) {
        Rect inner = {tile.x + 2, tile.y + 20, tile.width - 4, tile.height - 20 - 2};
        if (inner.width <= 0) inner.width = 0;
        if (inner.height <= 0) inner.height = 0;
        layoutChildren(tile.node, inner, depth + 1, out);
      }
    }
  }

  std::int64_t total_ = 1;
  Rect left_;
  std::vector<TreemapRect> out_;
};

::testing::AssertionResult sameBits(double a, double b) {
  if (std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b)) {
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure() << a << " and " << b << " differ by " << a - b;
}

void expectSame(const std::vector<TreemapRect>& actual, const std::vector<TreemapRect>& expected) {
  ASSERT_EQ(actual.size(), expected.size());
  for (std::size_t k = 0; k < actual.size(); ++k) {
    SCOPED_TRACE("tile " + std::to_string(k));
    const TreemapRect& a = actual[k];
    const TreemapRect& b = expected[k];
    ASSERT_EQ(a.node.path(), b.node.path());
    ASSERT_EQ(a.node, b.node);
    ASSERT_TRUE(sameBits(a.x, b.x));
    ASSERT_TRUE(sameBits(a.y, b.y));
    ASSERT_TRUE(sameBits(a.width, b.width));
    ASSERT_TRUE(sameBits(a.height, b.height));
    ASSERT_EQ(a.depth, b.depth);
    ASSERT_EQ(a.nested, b.nested);
    ASSERT_EQ(a.parentSize, b.parentSize);
  }
}

Rect randomRect(Dice& dice, double longest) {
  Rect rect = {dice.fraction() * 50, dice.fraction() * 50, dice.fraction() * longest,
               dice.fraction() * longest};
  if (dice.chance(0.3)) rect.height = rect.width;
  if (dice.chance(0.3)) {
    rect = {0, 0, static_cast<double>(dice.below(1200)), static_cast<double>(dice.below(800))};
  }
  if (dice.chance(0.05)) rect.height = 1 + dice.fraction();
  return rect;
}

TEST(TreemapLayoutModel, rows_of_random_lists_agree_with_the_model_in_every_bit) {
  Dice dice(20240131);
  std::size_t tiles = 0;
  for (int round = 0; round < 6000; ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    const std::vector<DiskNode> items = files(randomSizes(dice, 60));
    const Rect rect = randomRect(dice, 2500);
    const std::vector<TreemapRect> actual = TreemapLayout::squarify(items, rect);
    expectSame(actual, Model::squarify(items, rect));
    if (HasFatalFailure()) return;
    tiles += actual.size();
  }
  EXPECT_GT(tiles, 100'000U);
}

TEST(TreemapLayoutModel, rows_of_long_lists_agree_with_the_model_in_every_bit) {
  Dice dice(7);
  for (int round = 0; round < 60; ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    const std::vector<DiskNode> items = files(randomSizes(dice, 600));
    const Rect rect = randomRect(dice, 4000);
    expectSame(TreemapLayout::squarify(items, rect), Model::squarify(items, rect));
    if (HasFatalFailure()) return;
  }
}

TEST(TreemapLayoutModel, layouts_of_random_trees_agree_with_the_model_in_every_bit) {
  Dice dice(99);
  std::size_t tiles = 0;
  std::size_t full = 0;
  std::size_t deepest = 0;
  for (int round = 0; round < 2500; ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    const std::size_t most = dice.chance(0.3) ? 150 : dice.chance(0.5) ? 30 : 8;
    const DiskNode root = randomFolder(dice, "/r", most > 100 ? 2 : 4, most);
    const Rect rect = randomRect(dice, 3000);
    const std::vector<TreemapRect> actual = TreemapLayout::layout(root, rect);
    expectSame(actual, Model::layout(root, rect));
    if (HasFatalFailure()) return;
    tiles += actual.size();
    if (actual.size() == 500) ++full;
    for (const TreemapRect& tile : actual) deepest += tile.depth == 3 ? 1 : 0;
  }
  // The random trees must have produced enough tiles, full layouts and tiles at depth 3.
  EXPECT_GT(tiles, 50'000U);
  EXPECT_GT(full, 20U);
  EXPECT_GT(deepest, 1000U);
}

}  // namespace
}  // namespace tessaly
