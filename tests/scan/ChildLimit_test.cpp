#include "scan/ScanFacts.h"

namespace tessaly {
namespace {

using testing::SizeIs;

// Hard links to one file replace many files: they have the same size and take no space.
class ChildLimit : public ScanFacts {};
TESSALY_FOR_ALL_WALKERS(ChildLimit);

TEST_P(ChildLimit, a_folder_of_100_large_and_3_small_files_has_80_nodes_and_a_remainder) {
  const TempTree tree(R"(
    full/
      large-first 256K
      large-### = full/large-first x99
      small-# 4K x3
  )");
  const DiskNode full = below(scan(tree.path()), "full");
  EXPECT_EQ(full.size(), (100 * 256 + 2 * 3 * 4) * KiB);
  ASSERT_THAT(childNames(full), SizeIs(81));
  EXPECT_EQ(full.children()[0].name(), "large-000");
  EXPECT_EQ(full.children()[79].name(), "large-079");
  const DiskNode rest = full.children()[80];
  EXPECT_EQ(rest.name(), "+ 20 more");
  EXPECT_EQ(rest.path(), tree.at("full/__rest__"));
  EXPECT_EQ(rest.size(), 20 * 256 * KiB);
  EXPECT_FALSE(rest.isDir());
  EXPECT_EQ(rest.kind(), FileKind::other);
  EXPECT_EQ(rest.mtime(), std::nullopt);
  EXPECT_TRUE(rest.children().empty());
}

TEST_P(ChildLimit, no_child_of_80_is_merged) {
  const TempTree tree(R"(
    large-first 256K
    large-## = large-first x79
  )");
  const DiskNode root = scan(tree.path());
  ASSERT_THAT(childNames(root), SizeIs(80));
  EXPECT_EQ(root.children()[79].name(), "large-first");
}

TEST_P(ChildLimit, the_81st_child_alone_makes_a_remainder) {
  const TempTree tree(R"(
    large-first 256K
    large-## = large-first x79
    least/
      inside 4K
  )");
  const DiskNode root = scan(tree.path());
  ASSERT_THAT(childNames(root), SizeIs(81));
  EXPECT_EQ(root.children()[80].name(), "+ 1 more");
  EXPECT_EQ(root.children()[80].size(), 8 * KiB);
}

TEST_P(ChildLimit, the_remainder_comes_last_even_if_it_is_the_largest) {
  const TempTree tree(R"(
    larger 512K
    large-first 256K
    large-### = large-first x150
  )");
  const DiskNode root = scan(tree.path());
  ASSERT_THAT(childNames(root), SizeIs(81));
  EXPECT_EQ(root.children()[0].name(), "larger");
  EXPECT_EQ(root.children()[80].name(), "+ 72 more");
  EXPECT_EQ(root.children()[80].size(), 72 * 256 * KiB);
}

TEST_P(ChildLimit, children_beyond_the_limit_without_a_size_make_no_remainder) {
  const TempTree tree(R"(
    large-first 256K
    large-## = large-first x79
    empty-##/ x30
  )");
  const DiskNode root = scan(tree.path());
  EXPECT_THAT(childNames(root), SizeIs(80));
  EXPECT_FALSE(has(root, "empty-00"));
}

TEST_P(ChildLimit, the_remainder_of_the_top_folder_is_directly_below_it) {
  const TempTree tree(R"(
    large-first 256K
    large-### = large-first x100
  )");
  EXPECT_EQ(scan(tree.path()).children()[80].path(), tree.at("__rest__"));
}

TEST_P(ChildLimit, a_file_named_like_a_remainder_is_a_file) {
  const TempTree tree(R"(
    __rest__ 512K
    +\s20\smore 256K
  )");
  const DiskNode root = scan(tree.path());
  EXPECT_EQ(childNames(root), (std::vector<std::string>{"__rest__", "+ 20 more"}));
}

TEST_P(ChildLimit, small_files_of_important_folders_count_for_the_limit) {
  const TempTree tree(R"(
    Downloads/
      small-first 8K
      small-### = Downloads/small-first x80
      smallest-### 4K x19
  )");
  const DiskNode downloads = below(scan(tree.path()), "Downloads");
  ASSERT_THAT(childNames(downloads), SizeIs(81));
  EXPECT_EQ(downloads.children()[80].name(), "+ 20 more");
  EXPECT_EQ(downloads.children()[80].size(), (8 + 19 * 4) * KiB);
}

}  // namespace
}  // namespace tessaly
