// The lists of ScanInsights: largest files and empty folders.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <unordered_set>
#include <vector>

#include "scan/ScanInsights.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t noLimit = std::numeric_limits<std::int64_t>::max();

DiskNode file(const std::string& path, std::int64_t size) {
  return DiskNode({path.substr(path.rfind('/') + 1), path, size, false, FileKind::other, {}});
}

DiskNode folder(const std::string& path, std::int64_t size,
                const std::vector<DiskNode>& children = {}, FileKind kind = FileKind::folder) {
  return DiskNode({path.substr(path.rfind('/') + 1), path, size, true, kind, {}}, children);
}

DiskNode remainder(const std::string& parent, std::int64_t size) {
  return DiskNode({"+ 20 more", parent + "/__rest__", size, false, FileKind::other, {}});
}

std::vector<std::string> pathsOf(const std::vector<DiskNode>& nodes) {
  std::vector<std::string> paths;
  for (const DiskNode& node : nodes) paths.push_back(node.path());
  return paths;
}

std::vector<std::string> largest(const DiskNode& root, std::int64_t limit) {
  return pathsOf(ScanInsights::largestFiles(root, limit));
}

std::vector<std::string> empty(const DiskNode& root, std::int64_t limit) {
  return pathsOf(ScanInsights::emptyFolders(root, limit));
}

// /h
//   a/         9000
//     b/       8000
//       f      8000
//     c/          0
//     g         900
//   d/          500, with no node below
//   Tool.app/   400, with no node below
//   k           950
//   + 20 more  9999
DiskNode sample() {
  return folder("/h", 20000,
                {folder("/h/a", 9000,
                        {folder("/h/a/b", 8000, {file("/h/a/b/f", 8000)}), file("/h/a/g", 900),
                         folder("/h/a/c", 0)}),
                 file("/h/k", 950), folder("/h/d", 500),
                 folder("/h/Tool.app", 400, {}, FileKind::app), remainder("/h", 9999)});
}

// Largest files.

TEST(LargestFiles, the_files_of_all_folders_are_compared) {
  EXPECT_THAT(largest(sample(), 10), ElementsAre("/h/a/b/f", "/h/k", "/h/a/g"));
}

TEST(LargestFiles, files_are_listed_as_whole_nodes) {
  const std::vector<DiskNode> files = ScanInsights::largestFiles(sample(), 1);
  EXPECT_THAT(files, ElementsAre(file("/h/a/b/f", 8000)));
}

TEST(LargestFiles, no_more_files_than_the_limit_are_listed) {
  EXPECT_THAT(largest(sample(), 2), ElementsAre("/h/a/b/f", "/h/k"));
  EXPECT_THAT(largest(sample(), 3), ElementsAre("/h/a/b/f", "/h/k", "/h/a/g"));
  EXPECT_THAT(largest(sample(), noLimit), ElementsAre("/h/a/b/f", "/h/k", "/h/a/g"));
}

TEST(LargestFiles, no_files_are_listed_for_a_limit_below_one) {
  EXPECT_THAT(largest(sample(), 0), IsEmpty());
  EXPECT_THAT(largest(sample(), -1), IsEmpty());
  EXPECT_THAT(largest(sample(), std::numeric_limits<std::int64_t>::min()), IsEmpty());
}

TEST(LargestFiles, a_remainder_is_never_listed_although_it_counts_as_a_file) {
  const DiskNode tree = folder("/h", 500, {file("/h/f", 1), remainder("/h", 499)});
  EXPECT_THAT(largest(tree, 10), ElementsAre("/h/f"));
  EXPECT_EQ(ScanInsights::stats(tree, 0).files, 2);
}

TEST(LargestFiles, a_file_named_like_a_remainder_is_left_out) {
  const DiskNode tree = folder("/h", 9, {file("/h/+ notes", 5), file("/h/+notes", 4)});
  EXPECT_THAT(largest(tree, 10), ElementsAre("/h/+notes"));
}

TEST(LargestFiles, a_root_that_is_a_file_is_listed) {
  EXPECT_THAT(largest(file("/single", 5), 10), ElementsAre("/single"));
  EXPECT_THAT(largest(folder("/h", 5), 10), IsEmpty());
  EXPECT_THAT(largest(remainder("/h", 5), 10), IsEmpty());
}

TEST(LargestFiles, only_files_below_the_given_node_are_listed) {
  EXPECT_THAT(largest(sample().children().front(), 10), ElementsAre("/h/a/b/f", "/h/a/g"));
}

TEST(LargestFiles, files_in_a_bundle_that_has_children_are_listed) {
  const DiskNode tree = folder("/T.app", 9, {file("/T.app/binary", 9)}, FileKind::app);
  EXPECT_THAT(largest(tree, 10), ElementsAre("/T.app/binary"));
}

TEST(LargestFiles, files_of_equal_size_are_listed_in_walk_order) {
  std::vector<DiskNode> files;
  std::vector<std::string> paths;
  for (int k = 0; k < 100; ++k) {
    paths.push_back("/h/" + std::to_string(k * 7 % 100));
    files.push_back(file(paths.back(), 5));
  }
  const DiskNode tree = folder("/h", 500, files);
  EXPECT_EQ(largest(tree, noLimit), paths);
  paths.resize(30);
  EXPECT_EQ(largest(tree, 30), paths);
}

// Empty folders.

TEST(EmptyFolders, folders_without_a_node_below_are_listed_whatever_their_size) {
  EXPECT_THAT(ScanInsights::emptyFolders(sample(), 10),
              ElementsAre(folder("/h/a/c", 0), folder("/h/d", 500)));
}

TEST(EmptyFolders, the_root_is_never_listed) {
  EXPECT_THAT(empty(folder("/h", 0), 10), IsEmpty());
  EXPECT_THAT(empty(DiskNode(), 10), IsEmpty());
}

TEST(EmptyFolders, another_node_with_the_path_of_the_root_is_never_listed) {
  const DiskNode tree = folder("/h", 5, {folder("/q", 5, {folder("/h", 5)}), folder("/h/h", 0)});
  EXPECT_THAT(empty(tree, 10), ElementsAre("/h/h"));
}

TEST(EmptyFolders, bundles_files_and_nodes_named_like_remainders_are_left_out) {
  const DiskNode tree =
      folder("/h", 9,
             {folder("/h/Tool.app", 3, {}, FileKind::app), folder("/h/+ 20 more", 2),
              file("/h/f", 2), remainder("/h", 2), folder("/h/+x", 0)});
  EXPECT_THAT(empty(tree, 10), ElementsAre("/h/+x"));
}

TEST(EmptyFolders, folders_are_sorted_by_the_bytes_of_their_paths) {
  const DiskNode tree =
      folder("/h", 9,
             {folder("/h/\xff", 5), folder("/h/b", 4), folder("/h/a", 3, {folder("/h/a/x", 3)}),
              folder("/h/a!", 2), folder("/h/B", 1)});
  EXPECT_THAT(empty(tree, 10), ElementsAre("/h/B", "/h/a!", "/h/a/x", "/h/b", "/h/\xff"));
}

TEST(EmptyFolders, the_limit_applies_in_walk_order_before_sorting) {
  const DiskNode tree = folder("/h", 9,
                               {folder("/h/z", 5, {folder("/h/z/2", 2), folder("/h/z/1", 1)}),
                                folder("/h/m", 3), folder("/h/a", 1)});
  EXPECT_THAT(empty(tree, 1), ElementsAre("/h/z/2"));
  EXPECT_THAT(empty(tree, 2), ElementsAre("/h/z/1", "/h/z/2"));
  EXPECT_THAT(empty(tree, 3), ElementsAre("/h/m", "/h/z/1", "/h/z/2"));
  EXPECT_THAT(empty(tree, 4), ElementsAre("/h/a", "/h/m", "/h/z/1", "/h/z/2"));
  EXPECT_THAT(empty(tree, noLimit), ElementsAre("/h/a", "/h/m", "/h/z/1", "/h/z/2"));
}

TEST(EmptyFolders, the_first_200_folders_of_the_walk_are_listed) {
  std::vector<DiskNode> folders;
  for (int k = 0; k < 500; ++k) {
    folders.push_back(folder("/h/" + std::to_string(999 - k), 0));
  }
  const std::vector<std::string> paths = empty(folder("/h", 0, folders), 200);
  ASSERT_EQ(paths.size(), 200U);
  EXPECT_EQ(paths.front(), "/h/800");
  EXPECT_EQ(paths.back(), "/h/999");
}

TEST(EmptyFolders, no_folders_are_listed_for_a_limit_below_one) {
  EXPECT_THAT(empty(sample(), 0), IsEmpty());
  EXPECT_THAT(empty(sample(), -1), IsEmpty());
}

TEST(EmptyFolders, folders_with_the_same_path_are_in_walk_order) {
  const DiskNode tree = folder("/h", 9, {folder("/h/b", 4), folder("/h/a", 3), folder("/h/a", 2)});
  EXPECT_THAT(ScanInsights::emptyFolders(tree, 10),
              ElementsAre(folder("/h/a", 3), folder("/h/a", 2), folder("/h/b", 4)));
}

TEST(EmptyFolders, only_folders_below_the_given_node_are_listed) {
  EXPECT_THAT(empty(sample().children().front(), 10), ElementsAre("/h/a/c"));
}

// Stats as a value.

TEST(ScanStats, equality_and_hash_cover_all_five_fields) {
  const ScanStats stats{7, 3, 4, 1.5, 100};
  const std::vector<ScanStats> others{{8, 3, 4, 1.5, 100}, {7, 2, 4, 1.5, 100}, {7, 3, 5, 1.5, 100},
                                      {7, 3, 4, 2, 100},   {7, 3, 4, 1.5, 101}, {7, 4, 3, 1.5, 100},
                                      {7, 100, 4, 1.5, 3}};
  std::unordered_set<ScanStats> all{stats, {7, 3, 4, 1.5, 100}};
  EXPECT_EQ(all.size(), 1U);
  all.insert(others.begin(), others.end());
  EXPECT_EQ(all.size(), others.size() + 1);
  for (const ScanStats& other : others) {
    EXPECT_NE(std::hash<ScanStats>{}(other), std::hash<ScanStats>{}(stats));
  }
}

}  // namespace
}  // namespace tessaly
