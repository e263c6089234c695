#include "treemap/TreemapSelect.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "treemap/SampleTrees_test.h"
#include "treemap/TreemapLayout.h"

namespace tessaly {
namespace {

using testing_trees::Dice;
using testing_trees::file;
using testing_trees::randomFolder;

TreemapRect tile(const std::string& path, const Rect& rect) {
  return {file(path, 1), rect.x, rect.y, rect.width, rect.height, 0, false, 0};
}

std::vector<std::string> paths(const std::vector<DiskNode>& nodes) {
  std::vector<std::string> all;
  for (const DiskNode& node : nodes) all.push_back(node.path());
  return all;
}

using Paths = std::vector<std::string>;

// A folder with two files under its header band, and a file beside it.
std::vector<TreemapRect> folderAndFile() {
  return {tile("/a", {0, 0, 100, 100}), tile("/a/one", {2, 20, 40, 78}),
          tile("/a/two", {50, 20, 40, 78}), tile("/b", {110, 0, 50, 100})};
}

TEST(TreemapSelect, touched_files_are_selected_and_their_folder_is_not) {
  EXPECT_EQ(paths(TreemapSelect::hits(folderAndFile(), {30, 10, 40, 40})),
            (Paths{"/a/one", "/a/two"}));
}

TEST(TreemapSelect, a_folder_is_selected_by_its_header_band) {
  EXPECT_EQ(paths(TreemapSelect::hits(folderAndFile(), {10, 2, 60, 10})), Paths{"/a"});
}

TEST(TreemapSelect, a_folder_is_selected_by_the_gap_between_its_tiles) {
  EXPECT_EQ(paths(TreemapSelect::hits(folderAndFile(), {43, 30, 6, 10})), Paths{"/a"});
}

TEST(TreemapSelect, touched_tiles_beside_a_folder_are_selected_too) {
  EXPECT_EQ(paths(TreemapSelect::hits(folderAndFile(), {60, 30, 80, 10})), (Paths{"/a/two", "/b"}));
}

TEST(TreemapSelect, a_band_below_four_points_selects_nothing) {
  EXPECT_TRUE(TreemapSelect::hits(folderAndFile(), {0, 0, 3.9, 100}).empty());
  EXPECT_TRUE(TreemapSelect::hits(folderAndFile(), {0, 0, 100, 3.9}).empty());
  EXPECT_EQ(TreemapSelect::hits(folderAndFile(), {5, 5, 4, 4}).size(), 1U);
}

TEST(TreemapSelect, a_band_that_only_touches_an_edge_selects_nothing) {
  EXPECT_TRUE(TreemapSelect::hits(folderAndFile(), {160, 0, 20, 20}).empty());
  EXPECT_TRUE(TreemapSelect::hits(folderAndFile(), {100, 0, 10, 100}).empty());
}

TEST(TreemapSelect, a_map_without_tiles_has_no_selection) {
  EXPECT_TRUE(TreemapSelect::hits({}, {0, 0, 100, 100}).empty());
}

TEST(TreemapSelect, a_sibling_with_the_same_prefix_is_not_inside_a_folder) {
  const std::vector<TreemapRect> rects = {tile("/a/b", {0, 0, 50, 50}),
                                          tile("/a/bc", {50, 0, 50, 50})};
  EXPECT_EQ(paths(TreemapSelect::hits(rects, {40, 10, 20, 20})), (Paths{"/a/b", "/a/bc"}));
}

TEST(TreemapSelect, no_folder_above_the_deepest_tile_is_selected) {
  const std::vector<TreemapRect> rects = {tile("/a", {0, 0, 90, 90}), tile("/a/b", {5, 5, 80, 80}),
                                          tile("/a/b/c", {10, 10, 70, 70}),
                                          tile("/a/b/c/d", {15, 15, 60, 60})};
  EXPECT_EQ(paths(TreemapSelect::hits(rects, {0, 0, 90, 90})), Paths{"/a/b/c/d"});
}

TEST(TreemapSelect, selected_tiles_keep_the_order_of_the_list) {
  std::vector<TreemapRect> rects = folderAndFile();
  std::reverse(rects.begin(), rects.end());
  EXPECT_EQ(paths(TreemapSelect::hits(rects, {0, 0, 200, 200})), (Paths{"/b", "/a/two", "/a/one"}));
}

TEST(TreemapSelect, names_are_compared_as_bytes) {
  const std::vector<TreemapRect> rects = {tile("/a\xff", {0, 0, 50, 50}),
                                          tile("/a\xff/\xfe", {5, 5, 30, 30}),
                                          tile("/A\xff", {50, 0, 50, 50})};
  EXPECT_EQ(paths(TreemapSelect::hits(rects, {0, 0, 100, 100})), (Paths{"/a\xff/\xfe", "/A\xff"}));
}

// The rule in its simplest form: compares each touched tile with every other one.
std::vector<std::string> plainHits(const std::vector<TreemapRect>& rects, const Rect& band) {
  std::vector<std::string> touched;
  for (const TreemapRect& rect : rects) {
    const bool apart = rect.x + rect.width <= band.x || band.x + band.width <= rect.x ||
                       rect.y + rect.height <= band.y || band.y + band.height <= rect.y;
    if (!apart) touched.push_back(rect.node.path());
  }
  std::vector<std::string> kept;
  for (const std::string& path : touched) {
    const bool above = std::any_of(touched.begin(), touched.end(), [&](const std::string& other) {
      return other != path && other.starts_with(path + "/");
    });
    if (!above) kept.push_back(path);
  }
  return kept;
}

TEST(TreemapSelect, the_selection_agrees_with_the_plain_rule_on_random_layouts) {
  Dice dice(31);
  std::size_t selected = 0;
  for (int round = 0; round < 400; ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    std::vector<TreemapRect> rects =
        TreemapLayout::layout(randomFolder(dice, "/r", 4, 40), {0, 0, 1200, 800});
    if (dice.chance(0.5)) {
      std::stable_sort(rects.begin(), rects.end(), [](const TreemapRect& a, const TreemapRect& b) {
        return a.depth < b.depth;
      });
    }
    const Rect band = {dice.fraction() * 1000, dice.fraction() * 700, 4 + dice.fraction() * 600,
                       4 + dice.fraction() * 400};
    const std::vector<std::string> actual = paths(TreemapSelect::hits(rects, band));
    ASSERT_EQ(actual, plainHits(rects, band));
    selected += actual.size();
  }
  EXPECT_GT(selected, 1000U);
}

}  // namespace
}  // namespace tessaly
