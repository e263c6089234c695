#include "platform/linux/VisibleMounts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::Optional;

// A row of the list; the type does not matter here.
std::string row(int id, int parent, const std::string& point) {
  return std::to_string(id) + " " + std::to_string(parent) + " 8:1 / " + point +
         " rw - ext4 d rw\n";
}

VisibleMounts mounts(const std::string& table) {
  return VisibleMounts(mountsIn(table));
}

TEST(VisibleMounts, a_path_belongs_to_the_mount_nearest_above_it) {
  const VisibleMounts all =
      mounts(row(1, 0, "/") + row(2, 1, "/home") + row(3, 2, "/home/me/disk"));
  EXPECT_THAT(all.at("/"), Optional(0U));
  EXPECT_THAT(all.at("/homes"), Optional(0U));
  EXPECT_THAT(all.at("/home"), Optional(1U));
  EXPECT_THAT(all.at("/home/me"), Optional(1U));
  EXPECT_THAT(all.at("/home/me/disk/film"), Optional(2U));
  EXPECT_THAT(all.way(2), ElementsAre(2U, 1U, 0U));
}

TEST(VisibleMounts, the_upper_one_of_two_mounts_on_one_point_is_visible) {
  const VisibleMounts all = mounts(row(1, 0, "/") + row(2, 1, "/a") + row(3, 2, "/a"));
  EXPECT_THAT(all.at("/a/b"), Optional(2U));
  EXPECT_FALSE(all.isVisible(1));
  EXPECT_TRUE(all.isVisible(2));
}

TEST(VisibleMounts, the_upper_mount_does_not_depend_on_the_order_of_the_list) {
  const VisibleMounts all = mounts(row(3, 2, "/a") + row(1, 0, "/") + row(2, 1, "/a"));
  EXPECT_THAT(all.at("/a/b"), Optional(0U));
}

TEST(VisibleMounts, a_mount_hides_what_is_mounted_below_its_point) {
  const VisibleMounts all = mounts(row(1, 0, "/") + row(2, 1, "/a/b") + row(3, 2, "/a/b/c") +
                                   row(4, 1, "/a") + row(5, 4, "/a/b/d"));
  EXPECT_FALSE(all.isVisible(1));
  EXPECT_FALSE(all.isVisible(2));
  EXPECT_TRUE(all.isVisible(3));
  EXPECT_TRUE(all.isVisible(4));
  EXPECT_THAT(all.at("/a/b/c"), Optional(3U));
}

TEST(VisibleMounts, a_mount_on_top_of_another_hides_what_is_mounted_in_that) {
  const VisibleMounts all =
      mounts(row(1, 0, "/") + row(2, 1, "/a") + row(3, 2, "/a/b") + row(4, 2, "/a"));
  EXPECT_THAT(all.at("/a/b"), Optional(3U));
  EXPECT_FALSE(all.isVisible(2));
}

// As in a folder that was made the root of a process: the parent of its root is not listed.
TEST(VisibleMounts, mounts_whose_parent_is_not_listed_are_visible) {
  const VisibleMounts all = mounts(row(2, 1, "/a") + row(3, 1, "/a/b"));
  EXPECT_EQ(all.at("/"), std::nullopt);
  EXPECT_THAT(all.at("/a"), Optional(0U));
  EXPECT_TRUE(all.isVisible(1));
}

TEST(VisibleMounts, a_damaged_list_only_hides_mounts) {
  const VisibleMounts all = mounts(row(1, 2, "/a") + row(2, 1, "/a/b") + row(3, 3, "/c"));
  EXPECT_EQ(all.at("/a/b"), std::nullopt);
  EXPECT_THAT(all.at("/c"), Optional(2U));
  EXPECT_EQ(mounts("").at("/"), std::nullopt);
}

TEST(IsAtOrBelow, paths_are_compared_by_whole_components) {
  EXPECT_TRUE(isAtOrBelow("/a/b", "/a"));
  EXPECT_TRUE(isAtOrBelow("/a", "/a"));
  EXPECT_FALSE(isAtOrBelow("/ab", "/a"));
  EXPECT_FALSE(isAtOrBelow("/a", "/a/b"));
  EXPECT_TRUE(isAtOrBelow("/a", "/"));
  EXPECT_FALSE(isAtOrBelow("net:[1]", "/"));
}

}  // namespace
}  // namespace tessaly
