#include "treemap/Rect.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(Overlap, needs_a_part_in_common) {
  EXPECT_TRUE(overlap({0, 0, 10, 10}, {9.9, 9.9, 10, 10}));
  EXPECT_TRUE(overlap({0, 0, 10, 10}, {2, 2, 1, 1}));
  EXPECT_TRUE(overlap({2, 2, 1, 1}, {0, 0, 10, 10}));
  EXPECT_FALSE(overlap({0, 0, 10, 10}, {20, 0, 10, 10}));
  EXPECT_FALSE(overlap({0, 0, 10, 10}, {0, 20, 10, 10}));
}

TEST(Overlap, is_not_there_when_edges_or_corners_touch) {
  EXPECT_FALSE(overlap({0, 0, 10, 10}, {10, 0, 10, 10}));
  EXPECT_FALSE(overlap({0, 10, 10, 10}, {0, 0, 10, 10}));
  EXPECT_FALSE(overlap({0, 0, 10, 10}, {10, 10, 10, 10}));
}

TEST(Overlap, is_not_there_for_an_empty_rectangle) {
  EXPECT_FALSE(overlap({5, 5, 0, 0}, {0, 0, 10, 10}));
  EXPECT_FALSE(overlap({5, 5, 0, 3}, {0, 0, 10, 10}));
  EXPECT_FALSE(overlap({5, 5, -2, 3}, {0, 0, 10, 10}));
}

}  // namespace
}  // namespace tessaly
