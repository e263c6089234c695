#include "scan/ScanInsights.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace tessaly {
namespace {

using testing::ElementsAre;

DiskNode node(const std::string& path, bool isDir, std::int64_t size,
              const std::vector<DiskNode>& children = {}) {
  const std::string name = path == "/" ? "Macintosh HD" : path.substr(path.rfind('/') + 1);
  return DiskNode({name, path, size, isDir, isDir ? FileKind::folder : FileKind::other, {}},
                  children);
}

DiskNode sample() {
  return node(
      "/h", true, 100,
      {node("/h/a", true, 60, {node("/h/a/x", false, 40), node("/h/a/y", true, 5)}),
       node("/h/ab", true, 30, {node("/h/ab/x", false, 30)}), node("/h/__rest__", false, 10)});
}

std::vector<std::string> pathsOf(const std::optional<std::vector<DiskNode>>& chain) {
  std::vector<std::string> paths;
  if (!chain) return {"absent"};
  for (const DiskNode& step : *chain) paths.push_back(step.path());
  return paths;
}

TEST(ScanInsightsChain, a_chain_runs_from_the_root_to_the_target) {
  EXPECT_THAT(pathsOf(ScanInsights::chain(sample(), "/h/a/y")),
              ElementsAre("/h", "/h/a", "/h/a/y"));
  EXPECT_THAT(pathsOf(ScanInsights::chain(sample(), "/h/ab/x")),
              ElementsAre("/h", "/h/ab", "/h/ab/x"));
  EXPECT_THAT(pathsOf(ScanInsights::chain(sample(), "/h/__rest__")),
              ElementsAre("/h", "/h/__rest__"));
}

TEST(ScanInsightsChain, the_chain_to_the_root_is_the_root_alone) {
  EXPECT_THAT(pathsOf(ScanInsights::chain(sample(), "/h")), ElementsAre("/h"));
}

TEST(ScanInsightsChain, a_path_outside_the_tree_has_no_chain) {
  for (const char* path : {"", "/", "/h/", "/h/a/", "/h/a/z", "/h/a/x/deeper", "/h/abc", "/q",
                           "/q/a", "/q/ab/x", "x"}) {
    EXPECT_EQ(ScanInsights::chain(sample(), path), std::nullopt) << path;
  }
}

TEST(ScanInsightsChain, a_chain_starts_at_any_node_and_stays_below_it) {
  const DiskNode a = sample().children().front();
  EXPECT_THAT(pathsOf(ScanInsights::chain(a, "/h/a/x")), ElementsAre("/h/a", "/h/a/x"));
  EXPECT_EQ(ScanInsights::chain(a, "/h"), std::nullopt);
  EXPECT_EQ(ScanInsights::chain(a, "/h/ab"), std::nullopt);
}

TEST(ScanInsightsChain, paths_below_the_root_directory_have_a_chain) {
  const DiskNode disk = node("/", true, 9, {node("/a", true, 9, {node("/a/b", false, 9)})});
  EXPECT_THAT(pathsOf(ScanInsights::chain(disk, "/a/b")), ElementsAre("/", "/a", "/a/b"));
}

TEST(ScanInsightsChain, the_search_goes_on_with_the_next_sibling_after_a_dead_end) {
  const DiskNode tree = node("/h", true, 9,
                             {node("/h/a", true, 5, {node("/h/a/x", false, 5)}),
                              node("/h/a", true, 4, {node("/h/a/y", false, 4)})});
  const std::optional<std::vector<DiskNode>> chain = ScanInsights::chain(tree, "/h/a/y");
  ASSERT_THAT(pathsOf(chain), ElementsAre("/h", "/h/a", "/h/a/y"));
  EXPECT_EQ((*chain)[1].size(), 4);
}

TEST(ScanInsightsChain, a_child_with_a_path_outside_that_of_its_parent_is_searched) {
  const DiskNode tree = node(
      "/h", true, 9, {node("/q/a", true, 5, {node("/q/a/x", false, 5)}), node("/h/b", false, 4)});
  EXPECT_THAT(pathsOf(ScanInsights::chain(tree, "/q/a/x")), ElementsAre("/h", "/q/a", "/q/a/x"));
  EXPECT_THAT(pathsOf(ScanInsights::chain(tree, "/h/b")), ElementsAre("/h", "/h/b"));
}

TEST(ScanInsightsChain, a_folder_whose_name_is_a_prefix_of_the_target_is_not_searched) {
  const DiskNode tree = node("/h", true, 9, {node("/h/a", true, 5, {node("/h/ab/x", false, 5)})});
  EXPECT_EQ(ScanInsights::chain(tree, "/h/ab/x"), std::nullopt);
}

TEST(ScanInsightsChain, paths_are_compared_by_their_bytes) {
  const DiskNode tree = node("/h", true, 9, {node("/h/\xff\n", false, 9)});
  EXPECT_THAT(pathsOf(ScanInsights::chain(tree, "/h/\xff\n")), ElementsAre("/h", "/h/\xff\n"));
}

TEST(ScanInsightsChain, a_chain_in_a_deep_tree_needs_no_recursion_and_linear_time) {
  constexpr int depth = 100000;
  DiskTreeBuilder builder;
  std::string path = "/d";
  builder.open({"d", 1, true, FileKind::folder, {}}, path);
  for (int level = 0; level < depth; ++level) {
    builder.openBelow({"d", 1, true, FileKind::folder, {}});
    path += "/d";
  }
  for (int level = 0; level <= depth; ++level) builder.close();
  const DiskNode deep = builder.finish();
  const std::optional<std::vector<DiskNode>> chain = ScanInsights::chain(deep, path);
  ASSERT_TRUE(chain);
  EXPECT_EQ(chain->size(), depth + 1U);
  EXPECT_EQ(chain->back().path(), path);
  EXPECT_EQ(ScanInsights::stats(deep, 0).folders, depth + 1);
}

TEST(ScanInsightsStats, nodes_files_and_folders_are_counted) {
  EXPECT_EQ(ScanInsights::stats(sample(), 1.5), (ScanStats{7, 3, 4, 1.5, 100}));
}

TEST(ScanInsightsStats, only_nodes_below_the_given_one_are_counted) {
  EXPECT_EQ(ScanInsights::stats(sample().children().front(), 0), (ScanStats{3, 1, 2, 0, 60}));
  EXPECT_EQ(ScanInsights::stats(DiskNode(), 0), (ScanStats{1, 1, 0, 0, 0}));
}

}  // namespace
}  // namespace tessaly
