#include "scan/ProInsights.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

using ProInsights::isExcluded;

TEST(IsExcluded, a_prefix_excludes_its_own_path_and_all_below) {
  EXPECT_TRUE(isExcluded("/a/b", {"/a/b/"}));
  EXPECT_TRUE(isExcluded("/a/b/c", {"/a/b/"}));
  EXPECT_TRUE(isExcluded("/a/b", {"/a/b"}));
  EXPECT_TRUE(isExcluded("/a/b/c/d", {"/a/b"}));
}

TEST(IsExcluded, a_path_that_only_begins_with_a_prefix_is_not_below_it) {
  EXPECT_FALSE(isExcluded("/a/bc", {"/a/b/"}));
  EXPECT_FALSE(isExcluded("/a/bc", {"/a/b"}));
  EXPECT_FALSE(isExcluded("/a", {"/a/b"}));
}

TEST(IsExcluded, no_prefixes_exclude_no_path) {
  EXPECT_FALSE(isExcluded("/a", {}));
  EXPECT_FALSE(isExcluded("/a", {""}));
  EXPECT_FALSE(isExcluded("", {""}));
}

TEST(IsExcluded, one_matching_prefix_of_many_excludes_a_path) {
  EXPECT_TRUE(isExcluded("/x/y", {"", "/a", "/x"}));
}

TEST(IsExcluded, only_one_trailing_slash_of_a_prefix_is_removed) {
  EXPECT_FALSE(isExcluded("/a/b", {"/a//"}));
}

TEST(IsExcluded, the_root_excludes_every_path) {
  EXPECT_TRUE(isExcluded("/a", {"/"}));
}

TEST(IsExcluded, paths_are_compared_by_their_bytes) {
  EXPECT_FALSE(isExcluded("/A", {"/a"}));
  EXPECT_TRUE(isExcluded("/\xff/x", {"/\xff"}));
}

}  // namespace
}  // namespace tessaly
