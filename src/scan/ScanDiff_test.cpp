#include "scan/ScanDiff.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

constexpr std::int64_t MiB = 1048576;
constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();

DiskNode node(const std::string& path, bool isDir, std::int64_t size,
              const std::vector<DiskNode>& children = {}) {
  const std::string name = path == "/" ? "Macintosh HD" : path.substr(path.rfind('/') + 1);
  return DiskNode({name, path, size, isDir, isDir ? FileKind::folder : FileKind::other, {}},
                  children);
}

DiskNode sample() {
  return node("/h", true, 100,
              {node("/h/a", true, 60,
                    {node("/h/a/b", true, 40, {node("/h/a/b/deep", false, 40)}),
                     node("/h/a/__rest__", false, 5)}),
               node("/h/ab", true, 30, {node("/h/ab/x", false, 30)}), node("/h/f", false, 10)});
}

// Flattening.

TEST(Flatten, two_levels_are_the_root_its_children_and_their_children) {
  EXPECT_THAT(ScanDiff::flatten(sample(), 0, 2),
              UnorderedElementsAre(Pair("/h", 100), Pair("/h/a", 60), Pair("/h/a/b", 40),
                                   Pair("/h/a/__rest__", 5), Pair("/h/ab", 30), Pair("/h/ab/x", 30),
                                   Pair("/h/f", 10)));
}

TEST(Flatten, flatten_stops_at_the_deepest_level) {
  EXPECT_THAT(ScanDiff::flatten(sample(), 0, 0), UnorderedElementsAre(Pair("/h", 100)));
  EXPECT_THAT(
      ScanDiff::flatten(sample(), 0, 1),
      UnorderedElementsAre(Pair("/h", 100), Pair("/h/a", 60), Pair("/h/ab", 30), Pair("/h/f", 10)));
  EXPECT_EQ(ScanDiff::flatten(sample(), 0, 3).size(), 8U);
  EXPECT_EQ(ScanDiff::flatten(sample(), 0, 1000).size(), 8U);
}

TEST(Flatten, levels_are_counted_from_the_given_depth) {
  EXPECT_EQ(ScanDiff::flatten(sample(), 1, 2), ScanDiff::flatten(sample(), 0, 1));
  EXPECT_EQ(ScanDiff::flatten(sample(), 2, 2), ScanDiff::flatten(sample(), 0, 0));
  EXPECT_EQ(ScanDiff::flatten(sample(), -1, 1), ScanDiff::flatten(sample(), 0, 2));
}

TEST(Flatten, the_given_node_is_included_even_below_the_deepest_level) {
  EXPECT_THAT(ScanDiff::flatten(sample(), 5, 2), UnorderedElementsAre(Pair("/h", 100)));
  constexpr int deepest = std::numeric_limits<int>::max();
  constexpr int highest = std::numeric_limits<int>::min();
  EXPECT_EQ(ScanDiff::flatten(sample(), deepest, highest).size(), 1U);
  EXPECT_EQ(ScanDiff::flatten(sample(), highest, deepest).size(), 8U);
}

TEST(Flatten, flatten_starts_at_any_node_of_a_tree) {
  EXPECT_THAT(ScanDiff::flatten(sample().children().front(), 0, 1),
              UnorderedElementsAre(Pair("/h/a", 60), Pair("/h/a/b", 40), Pair("/h/a/__rest__", 5)));
  EXPECT_THAT(ScanDiff::flatten(DiskNode(), 0, 2), UnorderedElementsAre(Pair("", 0)));
}

TEST(Flatten, paths_below_the_root_of_the_disk_have_one_slash) {
  const DiskNode disk = node("/", true, 9, {node("/a", true, 9, {node("/a/b", false, 9)})});
  EXPECT_THAT(ScanDiff::flatten(disk, 0, 2),
              UnorderedElementsAre(Pair("/", 9), Pair("/a", 9), Pair("/a/b", 9)));
}

TEST(Flatten, a_path_outside_that_of_the_parent_is_kept) {
  const DiskNode tree =
      node("/h", true, 9, {node("/q", true, 5, {node("/q/x", false, 5)}), node("/h/b", false, 4)});
  EXPECT_THAT(ScanDiff::flatten(tree, 0, 2),
              UnorderedElementsAre(Pair("/h", 9), Pair("/q", 5), Pair("/q/x", 5), Pair("/h/b", 4)));
}

TEST(Flatten, the_later_of_two_nodes_with_one_path_is_kept) {
  const DiskNode tree = node("/h", true, 9, {node("/h/a", false, 5), node("/h/a", false, 4)});
  EXPECT_THAT(ScanDiff::flatten(tree, 0, 2), UnorderedElementsAre(Pair("/h", 9), Pair("/h/a", 4)));
}

TEST(Flatten, names_that_are_not_utf8_stay_distinct) {
  const DiskNode tree =
      node("/h", true, 9,
           {node("/h/caf\xe9", false, 5), node("/h/caf\xe8", false, 3), node("/h/\n", false, 1)});
  EXPECT_THAT(ScanDiff::flatten(tree, 0, 2),
              UnorderedElementsAre(Pair("/h", 9), Pair("/h/caf\xe9", 5), Pair("/h/caf\xe8", 3),
                                   Pair("/h/\n", 1)));
}

TEST(Flatten, a_deep_tree_is_flattened_without_recursion) {
  constexpr int depth = 3000;
  DiskTreeBuilder builder;
  builder.open({"d", 1, true, FileKind::folder, {}}, "/d");
  for (int level = 0; level < depth; ++level) {
    builder.openBelow({"d", 1, true, FileKind::folder, {}});
  }
  for (int level = 0; level <= depth; ++level) builder.close();
  const DiskNode deep = builder.finish();
  EXPECT_EQ(ScanDiff::flatten(deep, 0, 2).size(), 3U);
  EXPECT_EQ(ScanDiff::flatten(deep, 0, depth).size(), depth + 1U);
}

// Relative paths.

TEST(FlattenRelative, paths_are_relative_to_the_root) {
  EXPECT_THAT(
      ScanDiff::flattenRelative(sample(), "/h", 0, 2),
      UnorderedElementsAre(Pair(".", 100), Pair("a", 60), Pair("a/b", 40), Pair("a/__rest__", 5),
                           Pair("ab", 30), Pair("ab/x", 30), Pair("f", 10)));
  EXPECT_EQ(ScanDiff::flattenRelative(sample(), "/h/", 0, 2),
            ScanDiff::flattenRelative(sample(), "/h", 0, 2));
}

TEST(FlattenRelative, a_path_outside_the_root_stays_as_it_is) {
  EXPECT_THAT(
      ScanDiff::flattenRelative(sample(), "/h/a", 0, 1),
      UnorderedElementsAre(Pair("/h", 100), Pair(".", 60), Pair("/h/ab", 30), Pair("/h/f", 10)));
}

TEST(FlattenRelative, paths_of_the_whole_disk_lose_their_first_slash) {
  const DiskNode disk = node("/", true, 9, {node("/a", true, 9, {node("/a/b", false, 9)})});
  EXPECT_THAT(ScanDiff::flattenRelative(disk, "/", 0, 2),
              UnorderedElementsAre(Pair(".", 9), Pair("a", 9), Pair("a/b", 9)));
}

TEST(RelativeKey, the_key_of_the_root_is_a_dot_with_or_without_a_final_slash) {
  EXPECT_EQ(ScanDiff::relativeKey("/h", "/h"), ".");
  EXPECT_EQ(ScanDiff::relativeKey("/h", "/h/"), ".");
  EXPECT_EQ(ScanDiff::relativeKey("/h/", "/h/"), ".");
  EXPECT_EQ(ScanDiff::relativeKey("/", "/"), ".");
}

TEST(RelativeKey, the_key_of_a_path_below_the_root_omits_the_root) {
  EXPECT_EQ(ScanDiff::relativeKey("/h/a", "/h"), "a");
  EXPECT_EQ(ScanDiff::relativeKey("/h/a/b", "/h/"), "a/b");
  EXPECT_EQ(ScanDiff::relativeKey("/h/a/", "/h"), "a/");
  EXPECT_EQ(ScanDiff::relativeKey("/a/b", "/"), "a/b");
  EXPECT_EQ(ScanDiff::relativeKey("/h/caf\xe9", "/h"), "caf\xe9");
}

TEST(RelativeKey, the_key_of_a_path_outside_the_root_is_the_path) {
  EXPECT_EQ(ScanDiff::relativeKey("/q/a", "/h"), "/q/a");
  EXPECT_EQ(ScanDiff::relativeKey("/ha", "/h"), "/ha");
  EXPECT_EQ(ScanDiff::relativeKey("/", "/h"), "/");
  EXPECT_EQ(ScanDiff::relativeKey("a", "/h"), "a");
  EXPECT_EQ(ScanDiff::relativeKey("a", "/"), "a");
}

TEST(RelativeKey, only_one_trailing_slash_of_the_root_is_removed) {
  EXPECT_EQ(ScanDiff::relativeKey("/h/", "/h"), "");
  EXPECT_EQ(ScanDiff::relativeKey("/h/a", "/h//"), "/h/a");
  EXPECT_EQ(ScanDiff::relativeKey("/", "//"), ".");
  EXPECT_EQ(ScanDiff::relativeKey("/a", "//"), "a");
}

TEST(RelativeKey, an_empty_root_means_the_root_directory) {
  EXPECT_EQ(ScanDiff::relativeKey("/a", ""), "a");
  EXPECT_EQ(ScanDiff::relativeKey("", ""), ".");
}

// Growth.

std::vector<std::string> pathsOf(const std::vector<ScanDelta>& deltas) {
  std::vector<std::string> paths;
  for (const ScanDelta& delta : deltas) paths.push_back(delta.path);
  return paths;
}

TEST(Compare, equal_maps_have_no_growth) {
  const PathSizes sizes{{"/h", 100 * MiB}, {"/h/a", 60 * MiB}};
  EXPECT_THAT(ScanDiff::compare(sizes, sizes, MiB), IsEmpty());
  EXPECT_THAT(ScanDiff::compare({}, {}, MiB), IsEmpty());
}

TEST(Compare, growth_of_exactly_the_threshold_is_listed) {
  EXPECT_THAT(ScanDiff::compare({{"/h/a", 7}}, {{"/h/a", 7 + MiB}}, MiB),
              ElementsAre(ScanDelta{"a", "/h/a", 7, 7 + MiB}));
  EXPECT_THAT(ScanDiff::compare({{"/h/a", 7}}, {{"/h/a", 6 + MiB}}, MiB), IsEmpty());
}

TEST(Compare, shrunk_and_removed_paths_are_not_listed) {
  EXPECT_THAT(ScanDiff::compare({{"/h/a", 9 * MiB}, {"/h/b", 9 * MiB}, {"/h/gone", 9 * MiB}},
                                {{"/h/a", 9 * MiB - 1}, {"/h/b", 0}}, MiB),
              IsEmpty());
}

TEST(Compare, a_new_path_has_grown_from_0) {
  EXPECT_THAT(ScanDiff::compare({{"/h/a", 9 * MiB}},
                                {{"/h/a", 9 * MiB}, {"/h/new", MiB}, {"/h/small", MiB - 1}}, MiB),
              ElementsAre(ScanDelta{"new", "/h/new", 0, MiB}));
}

TEST(Compare, all_paths_from_the_threshold_on_are_listed_after_a_first_scan) {
  const PathSizes sizes{{"/h", 9 * MiB}, {"/h/a", 5 * MiB}, {"/h/b", 2 * MiB}, {"/h/c", MiB - 1}};
  EXPECT_THAT(pathsOf(ScanDiff::compare({}, sizes, MiB)), ElementsAre("/h", "/h/a", "/h/b"));
}

TEST(Compare, paths_are_sorted_by_growth_and_then_by_their_bytes) {
  const PathSizes older{{"/h/big", 500}, {"/h/a", 1}};
  const PathSizes newer{{"/h/big", 510}, {"/h/\xff", 5}, {"/h/z", 5}, {"/h/a/b", 5},
                        {"/h/a!", 5},    {"/h/b", 20},   {"/h/a", 6}};
  EXPECT_THAT(pathsOf(ScanDiff::compare(older, newer, 5)),
              ElementsAre("/h/b", "/h/big", "/h/a", "/h/a!", "/h/a/b", "/h/z", "/h/\xff"));
}

TEST(Compare, each_path_is_named_by_its_last_component) {
  const std::vector<ScanDelta> deltas = ScanDiff::compare(
      {}, {{"/", 5}, {"/h/a/", 4}, {"", 3}, {"/h/caf\xe9", 2}, {"/h/__rest__", 1}}, 1);
  EXPECT_THAT(deltas, ElementsAre(ScanDelta{"/", "/", 0, 5}, ScanDelta{"a", "/h/a/", 0, 4},
                                  ScanDelta{"", "", 0, 3}, ScanDelta{"caf\xe9", "/h/caf\xe9", 0, 2},
                                  ScanDelta{"__rest__", "/h/__rest__", 0, 1}));
}

TEST(Compare, the_given_threshold_applies_even_at_or_below_zero) {
  const PathSizes older{{"/h/a", 5}, {"/h/b", 5}};
  const PathSizes newer{{"/h/a", 5}, {"/h/b", 3}};
  EXPECT_THAT(pathsOf(ScanDiff::compare(older, newer, 1)), IsEmpty());
  EXPECT_THAT(pathsOf(ScanDiff::compare(older, newer, 0)), ElementsAre("/h/a"));
  EXPECT_THAT(pathsOf(ScanDiff::compare(older, newer, -2)), ElementsAre("/h/a", "/h/b"));
}

TEST(Compare, an_overflowing_difference_counts_as_the_largest) {
  const PathSizes older{{"/up", least}, {"/down", most}, {"/same", least}, {"/most", 0}};
  const PathSizes newer{{"/up", most}, {"/down", least}, {"/same", least}, {"/most", most}};
  EXPECT_THAT(
      ScanDiff::compare(older, newer, MiB),
      ElementsAre(ScanDelta{"most", "/most", 0, most}, ScanDelta{"up", "/up", least, most}));
  EXPECT_EQ(ScanDiff::compare(older, newer, least).size(), 4U);
}

// Two folders.

TEST(CompareFolders, paths_on_one_side_only_are_listed_whatever_their_size) {
  EXPECT_THAT(ScanDiff::compareFolders({{"a", 10}}, {}, MiB),
              ElementsAre(FolderCompareRow{"a", 10, 0}));
  EXPECT_THAT(ScanDiff::compareFolders({}, {{"a", 10}}, MiB),
              ElementsAre(FolderCompareRow{"a", 0, 10}));
}

TEST(CompareFolders, differences_below_the_threshold_are_left_out) {
  EXPECT_THAT(ScanDiff::compareFolders({{"a", 5}}, {{"a", 4 + MiB}}, MiB), IsEmpty());
  EXPECT_THAT(ScanDiff::compareFolders({{"a", 4 + MiB}}, {{"a", 5}}, MiB), IsEmpty());
}

TEST(CompareFolders, a_difference_of_exactly_the_threshold_is_listed_in_both_directions) {
  EXPECT_THAT(ScanDiff::compareFolders({{"a", 5}}, {{"a", 5 + MiB}}, MiB),
              ElementsAre(FolderCompareRow{"a", 5, 5 + MiB}));
  EXPECT_THAT(ScanDiff::compareFolders({{"a", 5 + MiB}}, {{"a", 5}}, MiB),
              ElementsAre(FolderCompareRow{"a", 5 + MiB, 5}));
}

TEST(CompareFolders, paths_of_size_0_on_both_sides_are_left_out) {
  EXPECT_THAT(ScanDiff::compareFolders({{"a", 0}, {"b", 0}}, {{"a", 0}, {"c", 0}}, 0), IsEmpty());
}

TEST(CompareFolders, a_path_of_size_0_counts_as_missing) {
  EXPECT_THAT(ScanDiff::compareFolders({{"a", 0}, {"b", 10}}, {{"a", 10}, {"b", 0}}, MiB),
              ElementsAre(FolderCompareRow{"a", 0, 10}, FolderCompareRow{"b", 10, 0}));
}

TEST(CompareFolders, equal_maps_have_no_differences) {
  const PathSizes sizes{{".", 9 * MiB}, {"a", 3}};
  EXPECT_THAT(ScanDiff::compareFolders(sizes, sizes, MiB), IsEmpty());
}

TEST(CompareFolders, paths_are_sorted_by_difference_and_then_by_their_bytes) {
  const PathSizes left{{".", 100}, {"z", 7}, {"\xff", 7}, {"a/b", 7}, {"both", 50}};
  const PathSizes right{{".", 90}, {"a", 7}, {"a!", 7}, {"big", 40}, {"both", 48}};
  EXPECT_THAT(ScanDiff::compareFolders(left, right, 2),
              ElementsAre(FolderCompareRow{"big", 0, 40}, FolderCompareRow{".", 100, 90},
                          FolderCompareRow{"a", 0, 7}, FolderCompareRow{"a!", 0, 7},
                          FolderCompareRow{"a/b", 7, 0}, FolderCompareRow{"z", 7, 0},
                          FolderCompareRow{"\xff", 7, 0}, FolderCompareRow{"both", 50, 48}));
}

TEST(CompareFolders, an_overflowing_difference_counts_as_the_largest) {
  EXPECT_THAT(ScanDiff::compareFolders({{"a", least}, {"b", most}, {"c", 1}},
                                       {{"a", most}, {"b", least}, {"c", most}}, MiB),
              ElementsAre(FolderCompareRow{"a", least, most}, FolderCompareRow{"b", most, least},
                          FolderCompareRow{"c", 1, most}));
  EXPECT_THAT(ScanDiff::compareFolders({{"a", least}}, {}, MiB),
              ElementsAre(FolderCompareRow{"a", least, 0}));
}

}  // namespace
}  // namespace tessaly
