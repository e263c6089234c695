#include "treemap/Rect.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(Overlap, rectangles_with_a_common_area_overlap) {
  EXPECT_TRUE(overlap({0, 0, 10, 10}, {9.9, 9.9, 10, 10}));
  EXPECT_TRUE(overlap({0, 0, 10, 10}, {2, 2, 1, 1}));
  EXPECT_TRUE(overlap({2, 2, 1, 1}, {0, 0, 10, 10}));
  EXPECT_FALSE(overlap({0, 0, 10, 10}, {20, 0, 10, 10}));
  EXPECT_FALSE(overlap({0, 0, 10, 10}, {0, 20, 10, 10}));
}

TEST(Overlap, touching_edges_or_corners_do_not_overlap) {
  EXPECT_FALSE(overlap({0, 0, 10, 10}, {10, 0, 10, 10}));
  EXPECT_FALSE(overlap({0, 10, 10, 10}, {0, 0, 10, 10}));
  EXPECT_FALSE(overlap({0, 0, 10, 10}, {10, 10, 10, 10}));
}

TEST(Overlap, an_empty_rectangle_overlaps_nothing) {
  EXPECT_FALSE(overlap({5, 5, 0, 0}, {0, 0, 10, 10}));
  EXPECT_FALSE(overlap({5, 5, 0, 3}, {0, 0, 10, 10}));
  EXPECT_FALSE(overlap({5, 5, -2, 3}, {0, 0, 10, 10}));
}

}  // namespace
}  // namespace tessaly
