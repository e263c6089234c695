#include "treemap/TreemapLayout.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <set>
#include <string>
#include <vector>

#include "treemap/SampleTrees_test.h"

namespace tessaly {
namespace {

using testing_trees::Dice;
using testing_trees::file;
using testing_trees::files;
using testing_trees::folder;
using testing_trees::randomFolder;

DiskNode folderOf(const std::vector<std::int64_t>& sizes, const std::string& path = "/r") {
  std::int64_t sum = 0;
  for (const std::int64_t size : sizes) sum += size;
  return folder(path, sum, files(sizes, path));
}

std::vector<TreemapRect> squarified(const std::vector<std::int64_t>& sizes, const Rect& rect) {
  return TreemapLayout::squarify(files(sizes), rect);
}

// Compares rectangles to four decimals.
void expectRects(const std::vector<TreemapRect>& actual, const std::vector<Rect>& expected) {
  ASSERT_EQ(actual.size(), expected.size());
  for (std::size_t k = 0; k < actual.size(); ++k) {
    EXPECT_NEAR(actual[k].x, expected[k].x, 0.00005) << k;
    EXPECT_NEAR(actual[k].y, expected[k].y, 0.00005) << k;
    EXPECT_NEAR(actual[k].width, expected[k].width, 0.00005) << k;
    EXPECT_NEAR(actual[k].height, expected[k].height, 0.00005) << k;
  }
}

std::vector<std::string> names(const std::vector<TreemapRect>& tiles) {
  std::vector<std::string> all;
  for (const TreemapRect& tile : tiles) all.emplace_back(tile.node.name());
  return all;
}

TEST(Squarify, three_items_form_columns_in_a_wide_rectangle) {
  expectRects(squarified({50, 30, 20}, {0, 0, 100, 60}),
              {{0, 0, 50, 60}, {50, 0, 30, 60}, {80, 0, 20, 60}});
}

TEST(Squarify, the_last_item_takes_the_rest_even_when_it_is_the_smallest) {
  expectRects(squarified({40, 30, 20, 10}, {0, 0, 100, 100}),
              {{0, 0, 70, 57.1429}, {0, 57.1429, 70, 42.8571}, {70, 0, 30, 20}, {70, 20, 30, 80}});
}

TEST(Squarify, seven_items_are_placed_in_strips_of_both_directions) {
  expectRects(squarified({6, 6, 4, 3, 2, 2, 1}, {0, 0, 600, 400}),
              {{0, 0, 300, 200},
               {0, 200, 300, 200},
               {300, 0, 171.4286, 116.6667},
               {471.4286, 0, 128.5714, 116.6667},
               {300, 116.6667, 300, 113.3333},
               {300, 230, 300, 113.3333},
               {300, 343.3333, 300, 56.6667}});
}

TEST(Squarify, a_single_item_fills_the_rectangle) {
  expectRects(squarified({7}, {3, 4, 20, 10}), {{3, 4, 20, 10}});
}

TEST(Squarify, rectangles_keep_the_given_order) {
  EXPECT_EQ(names(squarified({1, 5, 3}, {0, 0, 90, 90})),
            (std::vector<std::string>{"0", "1", "2"}));
}

TEST(Squarify, squarified_rectangles_have_depth_0_and_no_parent_size) {
  for (const TreemapRect& tile : squarified({5, 3}, {0, 0, 90, 90})) {
    EXPECT_EQ(tile.depth, 0);
    EXPECT_FALSE(tile.nested);
    EXPECT_EQ(tile.parentSize, 0);
  }
}

TEST(Squarify, no_items_give_no_rectangles) {
  EXPECT_TRUE(squarified({}, {0, 0, 90, 90}).empty());
}

TEST(Squarify, a_rectangle_needs_a_width_and_a_height_above_one) {
  EXPECT_TRUE(squarified({5}, {0, 0, 1, 90}).empty());
  EXPECT_TRUE(squarified({5}, {0, 0, 90, 1}).empty());
  EXPECT_TRUE(squarified({5}, {0, 0, -90, 90}).empty());
  EXPECT_EQ(squarified({5}, {0, 0, 1.001, 1.001}).size(), 1U);
}

TEST(Squarify, items_without_a_size_are_left_out) {
  EXPECT_EQ(names(squarified({0, 5, -2, 3, 0}, {0, 0, 90, 90})),
            (std::vector<std::string>{"1", "3"}));
}

TEST(Squarify, items_are_stacked_at_the_edge_if_all_have_size_0) {
  expectRects(squarified({0, 0}, {0, 0, 100, 60}), {{0, 0, 100, 0}, {0, 0, 100, 0}});
  expectRects(squarified({-3, 0}, {0, 0, 60, 100}), {{0, 0, 0, 100}, {0, 0, 0, 100}});
}

TEST(Squarify, the_first_strip_of_a_square_is_at_its_left_edge) {
  // Three equal items: the first two share the first strip.
  expectRects(squarified({1, 1, 1}, {0, 0, 90, 90}),
              {{0, 0, 60, 45}, {0, 45, 60, 45}, {60, 0, 30, 90}});
}

TEST(Squarify, the_first_strip_of_a_tall_rectangle_is_at_its_top_edge) {
  expectRects(squarified({50, 30, 20}, {0, 0, 60, 100}),
              {{0, 0, 60, 50}, {0, 50, 60, 30}, {0, 80, 60, 20}});
}

TEST(SquarifyDeathTest, sizes_whose_sum_overflows_end_the_program) {
  constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(squarified({most - 1, 1}, {0, 0, 90, 90}).size(), 2U);
  EXPECT_DEATH(squarified({most, 1}, {0, 0, 90, 90}), "overflow");
  // No two of these share a row.
  EXPECT_DEATH(squarified({most - 2, 2, 1}, {0, 0, 90, 90}), "overflow");
}

TEST(TreemapLayout, a_node_without_children_has_no_tiles) {
  EXPECT_TRUE(TreemapLayout::layout(folder("/r", 100), {0, 0, 400, 300}).empty());
  EXPECT_TRUE(TreemapLayout::layout(file("/r", 100), {0, 0, 400, 300}).empty());
  EXPECT_TRUE(TreemapLayout::layout(DiskNode(), {0, 0, 400, 300}).empty());
}

TEST(TreemapLayout, a_node_with_empty_children_has_no_tiles) {
  EXPECT_TRUE(TreemapLayout::layout(folderOf({0, 0, 0}), {0, 0, 400, 300}).empty());
  EXPECT_TRUE(
      TreemapLayout::layout(folder("/r", 9, files({-1, 0}, "/r")), {0, 0, 400, 300}).empty());
}

TEST(TreemapLayout, a_tile_needs_a_canvas_of_fifteen_by_fifteen) {
  const DiskNode root = folderOf({10});
  for (const double side : {0.0, 1.0, 2.0, 9.0, 9.5, 10.0, 13.0, 14.9}) {
    EXPECT_TRUE(TreemapLayout::layout(root, {0, 0, side, side}).empty()) << side;
    EXPECT_TRUE(TreemapLayout::layout(root, {0, 0, side, 400}).empty()) << side;
    EXPECT_TRUE(TreemapLayout::layout(root, {0, 0, 400, side}).empty()) << side;
  }
  expectRects(TreemapLayout::layout(root, {0, 0, 15, 15}), {{5, 5, 5, 5}});
}

TEST(TreemapLayout, tiles_move_with_the_position_of_the_rectangle) {
  expectRects(TreemapLayout::layout(folderOf({10}), {100, 200, 60, 50}), {{105, 205, 50, 40}});
}

TEST(TreemapLayout, neighbours_have_gaps_of_two_between_them) {
  // Inside the inset of four: 100 by 60.
  expectRects(TreemapLayout::layout(folderOf({50, 30, 20}), {0, 0, 108, 68}),
              {{5, 5, 48, 58}, {55, 5, 28, 58}, {85, 5, 18, 58}});
}

TEST(TreemapLayout, tiles_are_sorted_by_size_and_then_in_stored_order) {
  EXPECT_EQ(names(TreemapLayout::layout(folderOf({5, 9, 5, 20, 5, 9}), {0, 0, 400, 300})),
            (std::vector<std::string>{"3", "1", "5", "0", "2", "4"}));
}

TEST(TreemapLayout, at_most_the_hundred_largest_children_of_a_folder_are_shown) {
  std::vector<std::int64_t> sizes;
  for (int k = 0; k < 101; ++k) sizes.push_back(1000 + k);
  const std::vector<TreemapRect> tiles = TreemapLayout::layout(folderOf(sizes), {0, 0, 2000, 2000});
  ASSERT_EQ(tiles.size(), 100U);
  EXPECT_EQ(tiles.front().node.size(), 1100);
  EXPECT_EQ(tiles.back().node.size(), 1001);
}

TEST(TreemapLayout, the_last_stored_of_a_hundred_and_one_equal_children_is_dropped) {
  const std::vector<TreemapRect> tiles =
      TreemapLayout::layout(folderOf(std::vector<std::int64_t>(101, 1000)), {0, 0, 2000, 2000});
  ASSERT_EQ(tiles.size(), 100U);
  for (std::size_t k = 0; k < tiles.size(); ++k) {
    EXPECT_EQ(tiles[k].node.name(), std::to_string(k));
  }
}

TEST(TreemapLayout, a_late_large_child_replaces_the_last_stored_of_the_smallest) {
  std::vector<std::int64_t> sizes(100, 1000);
  sizes.push_back(5000);
  const std::vector<TreemapRect> tiles = TreemapLayout::layout(folderOf(sizes), {0, 0, 2000, 2000});
  ASSERT_EQ(tiles.size(), 100U);
  EXPECT_EQ(tiles[0].node.name(), "100");
  EXPECT_EQ(tiles[1].node.name(), "0");
  EXPECT_EQ(tiles[99].node.name(), "98");
}

TEST(TreemapLayout, empty_children_are_left_out_before_the_limit_of_a_hundred_applies) {
  std::vector<std::int64_t> sizes(200, 0);
  for (std::size_t k = 0; k < sizes.size(); k += 2) sizes[k] = 1000;
  EXPECT_EQ(TreemapLayout::layout(folderOf(sizes), {0, 0, 2000, 2000}).size(), 100U);
}

TEST(TreemapLayout, a_share_of_a_twentieth_of_a_percent_is_shown_only_at_the_top_level) {
  const Rect rect = {0, 0, 20'000, 20'000};
  const DiskNode inside = folder("/r/d", 10'000, files({9995, 5}, "/r/d"));
  EXPECT_EQ(TreemapLayout::layout(inside, rect).size(), 2U);

  const DiskNode root = folder("/r", 10'000, {inside});
  EXPECT_EQ(names(TreemapLayout::layout(root, rect)), (std::vector<std::string>{"d", "0"}));
}

TEST(TreemapLayout, a_share_of_a_thousandth_is_shown_at_any_level) {
  const DiskNode root = folder("/r", 1000, {folder("/r/d", 1000, files({999, 1}, "/r/d"))});
  EXPECT_EQ(names(TreemapLayout::layout(root, {0, 0, 20'000, 20'000})),
            (std::vector<std::string>{"d", "0", "1"}));
}

TEST(TreemapLayout, shares_are_relative_to_the_stored_size_of_the_parent) {
  // The folder is much larger than the sum of its children: the smaller child is below a
  // thousandth.
  const DiskNode root =
      folder("/r", 1'000'000, {folder("/r/d", 1'000'000, files({2000, 900}, "/r/d"))});
  EXPECT_EQ(names(TreemapLayout::layout(root, {0, 0, 20'000, 20'000})),
            (std::vector<std::string>{"d", "0"}));
}

TEST(TreemapLayout, tiles_have_the_stored_size_of_the_parent_even_if_zero) {
  const DiskNode root = folder("/r", 0, {folder("/r/d", 70, files({30, 20}, "/r/d"))});
  const std::vector<TreemapRect> tiles = TreemapLayout::layout(root, {0, 0, 400, 300});
  ASSERT_EQ(tiles.size(), 3U);
  EXPECT_EQ(tiles[0].parentSize, 0);
  EXPECT_EQ(tiles[1].parentSize, 70);
  EXPECT_EQ(tiles[2].parentSize, 70);
}

TEST(TreemapLayout, a_folder_is_opened_below_a_header_band) {
  const DiskNode root = folder("/r", 50, {folder("/r/d", 50, files({50}, "/r/d"))});
  const std::vector<TreemapRect> tiles = TreemapLayout::layout(root, {0, 0, 210, 160});
  expectRects(tiles, {{5, 5, 200, 150}, {8, 26, 194, 126}});
  EXPECT_TRUE(tiles[0].nested);
  EXPECT_EQ(tiles[0].depth, 0);
  EXPECT_FALSE(tiles[1].nested);
  EXPECT_EQ(tiles[1].depth, 1);
}

// Five folders, each the only child of the previous one, and a file in the last.
DiskNode nestOfFolders() {
  DiskNode node = file("/r/a/b/c/d/e/f", 100);
  for (const char* path : {"/r/a/b/c/d/e", "/r/a/b/c/d", "/r/a/b/c", "/r/a/b", "/r/a", "/r"}) {
    node = folder(path, 100, {node});
  }
  return node;
}

TEST(TreemapLayout, a_folder_of_fifty_six_by_forty_four_at_depth_two_is_opened) {
  const DiskNode root = nestOfFolders();
  // At depth 2 a tile is 22 narrower and 58 lower than the canvas.
  const std::vector<TreemapRect> opened = TreemapLayout::layout(root, {0, 0, 78, 102});
  expectRects(opened, {{5, 5, 68, 92}, {8, 26, 62, 68}, {11, 47, 56, 44}, {14, 68, 50, 20}});
  EXPECT_TRUE(opened[2].nested);
  EXPECT_EQ(opened[2].depth, 2);
  EXPECT_FALSE(opened[3].nested);
}

TEST(TreemapLayout, a_slightly_smaller_folder_is_not_opened) {
  const DiskNode root = nestOfFolders();
  for (const Rect& rect : {Rect{0, 0, 77.9, 102}, Rect{0, 0, 78, 101.9}}) {
    const std::vector<TreemapRect> tiles = TreemapLayout::layout(root, rect);
    ASSERT_EQ(tiles.size(), 3U);
    EXPECT_FALSE(tiles[2].nested);
  }
}

TEST(TreemapLayout, a_folder_at_depth_three_is_never_opened) {
  const std::vector<TreemapRect> tiles = TreemapLayout::layout(nestOfFolders(), {0, 0, 4000, 3000});
  ASSERT_EQ(tiles.size(), 4U);
  EXPECT_EQ(tiles[3].depth, 3);
  EXPECT_GT(tiles[3].width, 3000);
  EXPECT_FALSE(tiles[3].nested);
}

TEST(TreemapLayout, empty_folders_and_files_are_not_opened) {
  const DiskNode odd({"odd", "/r/odd", 40, false, FileKind::app, std::nullopt},
                     files({40}, "/r/odd"));
  const DiskNode root = folder("/r", 100, {folder("/r/empty", 60), odd});
  const std::vector<TreemapRect> tiles = TreemapLayout::layout(root, {0, 0, 400, 300});
  ASSERT_EQ(tiles.size(), 2U);
  EXPECT_FALSE(tiles[0].nested);
  EXPECT_FALSE(tiles[1].nested);
}

TEST(TreemapLayout, a_folder_is_marked_as_opened_even_if_none_of_its_children_is_shown) {
  const DiskNode root = folder("/r", 60, {folder("/r/d", 60, files({0, 0}, "/r/d"))});
  const std::vector<TreemapRect> tiles = TreemapLayout::layout(root, {0, 0, 400, 300});
  ASSERT_EQ(tiles.size(), 1U);
  EXPECT_TRUE(tiles[0].nested);
}

TEST(TreemapLayout, a_tile_below_five_points_is_dropped_and_the_next_one_is_tried) {
  // The strip of the two equal small items is too narrow for the gap; the others fit.
  const DiskNode root = folderOf({985, 10, 5});
  const std::vector<TreemapRect> tiles = TreemapLayout::layout(root, {0, 0, 408, 308});
  ASSERT_FALSE(tiles.empty());
  EXPECT_EQ(tiles.size(), 1U);
  EXPECT_EQ(tiles[0].node.name(), "0");

  // Here the last tile, which takes the whole rest, is shown.
  const std::vector<TreemapRect> rest =
      TreemapLayout::layout(folderOf({40, 30, 20, 2}), {0, 0, 58, 58});
  EXPECT_EQ(names(rest), (std::vector<std::string>{"0", "1", "2", "3"}));
}

TEST(TreemapLayout, a_layout_has_at_most_five_hundred_tiles) {
  std::vector<DiskNode> folders;
  for (int k = 0; k < 10; ++k) {
    const std::string path = "/r/d" + std::to_string(k);
    folders.push_back(folder(path, 100'000, files(std::vector<std::int64_t>(100, 1000), path)));
  }
  const std::vector<TreemapRect> tiles =
      TreemapLayout::layout(folder("/r", 1'000'000, folders), {0, 0, 4000, 4000});
  ASSERT_EQ(tiles.size(), 500U);
  // Four folders with their whole contents; the fifth is cut off in the middle.
  EXPECT_EQ(tiles[404].node.path(), "/r/d4");
  EXPECT_TRUE(tiles[404].nested);
  EXPECT_EQ(tiles[499].node.path(), "/r/d4/94");
}

TEST(TreemapLayout, nested_tiles_are_inside_their_parents) {
  Dice dice(4711);
  std::size_t nestedTiles = 0;
  for (int round = 0; round < 400; ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    const DiskNode root = randomFolder(dice, "/r", 4, 40);
    const Rect rect = {dice.fraction() * 20, 0, 20 + dice.fraction() * 2000,
                       20 + dice.fraction() * 1500};
    const std::vector<TreemapRect> tiles = TreemapLayout::layout(root, rect);
    ASSERT_LE(tiles.size(), 500U);
    ASSERT_EQ(tiles, TreemapLayout::layout(root, rect));

    std::set<std::string> paths;
    std::vector<const TreemapRect*> open;  // the tiles that may contain the current one
    for (const TreemapRect& tile : tiles) {
      ASSERT_TRUE(paths.insert(tile.node.path()).second) << "a path twice";
      ASSERT_GE(tile.width, 5);
      ASSERT_GE(tile.height, 5);
      ASSERT_GE(tile.depth, 0);
      ASSERT_LE(tile.depth, 3);
      ASSERT_LE(static_cast<std::size_t>(tile.depth), open.size()) << "no parent before it";
      open.resize(static_cast<std::size_t>(tile.depth));

      Rect outer = {rect.x + 5, rect.y + 5, rect.width - 10, rect.height - 10};
      std::string parent = "/r";
      if (!open.empty()) {
        ASSERT_TRUE(open.back()->nested);
        outer = {open.back()->x + 3, open.back()->y + 21, open.back()->width - 6,
                 open.back()->height - 24};
        parent = open.back()->node.path();
        ASSERT_EQ(tile.parentSize, open.back()->node.size());
        ++nestedTiles;
      } else {
        ASSERT_EQ(tile.parentSize, root.size());
      }
      ASSERT_EQ(tile.node.path(), parent + "/" + std::string(tile.node.name()));
      constexpr double rounding = 1e-6;
      ASSERT_GE(tile.x, outer.x - rounding);
      ASSERT_GE(tile.y, outer.y - rounding);
      ASSERT_LE(tile.x + tile.width, outer.x + outer.width + rounding);
      ASSERT_LE(tile.y + tile.height, outer.y + outer.height + rounding);
      open.push_back(&tile);
    }
  }
  EXPECT_GT(nestedTiles, 3000U);
}

TEST(TreemapLayout, siblings_are_two_points_apart) {
  Dice dice(8);
  for (int round = 0; round < 100; ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    const std::vector<TreemapRect> tiles =
        TreemapLayout::layout(randomFolder(dice, "/r", 0, 40), {0, 0, 900, 700});
    for (const TreemapRect& a : tiles) {
      const Rect wide = {a.x - 0.9999, a.y - 0.9999, a.width + 1.9998, a.height + 1.9998};
      for (const TreemapRect& b : tiles) {
        if (&a == &b) continue;
        const Rect other = {b.x - 0.9999, b.y - 0.9999, b.width + 1.9998, b.height + 1.9998};
        ASSERT_FALSE(overlap(wide, other)) << a.node.name() << " and " << b.node.name();
      }
    }
  }
}

}  // namespace
}  // namespace tessaly
