#include "scan/ProInsights.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

using ProInsights::isExcluded;

TEST(IsExcluded, a_prefix_covers_itself_and_all_below) {
  EXPECT_TRUE(isExcluded("/a/b", {"/a/b/"}));
  EXPECT_TRUE(isExcluded("/a/b/c", {"/a/b/"}));
  EXPECT_TRUE(isExcluded("/a/b", {"/a/b"}));
  EXPECT_TRUE(isExcluded("/a/b/c/d", {"/a/b"}));
}

TEST(IsExcluded, a_longer_name_is_not_below) {
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

TEST(IsExcluded, one_trailing_slash_is_removed_and_no_more) {
  EXPECT_FALSE(isExcluded("/a/b", {"/a//"}));
}

TEST(IsExcluded, the_root_covers_every_path) {
  EXPECT_TRUE(isExcluded("/a", {"/"}));
}

TEST(IsExcluded, compares_bytes) {
  EXPECT_FALSE(isExcluded("/A", {"/a"}));
  EXPECT_TRUE(isExcluded("/\xff/x", {"/\xff"}));
}

}  // namespace
}  // namespace tessaly
