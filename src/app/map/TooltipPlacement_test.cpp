#include "app/map/TooltipPlacement.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

using TooltipPlacement::topLeft;

constexpr QSizeF canvas(1000, 600);

TEST(TooltipPlacement, is_to_the_lower_right_of_the_pointer) {
  EXPECT_EQ(topLeft({100, 200}, canvas), QPointF(116, 218));
}

TEST(TooltipPlacement, flips_to_the_left_near_the_right_edge) {
  // 706 + 16 + 270 is 992, which still fits.
  EXPECT_EQ(topLeft({706, 200}, canvas), QPointF(722, 218));
  EXPECT_EQ(topLeft({706.5, 200}, canvas), QPointF(424.5, 218));
}

TEST(TooltipPlacement, flips_upward_near_the_lower_edge) {
  // 456 + 18 + 118 is 592, which still fits.
  EXPECT_EQ(topLeft({100, 456}, canvas), QPointF(116, 474));
  EXPECT_EQ(topLeft({100, 456.5}, canvas), QPointF(116, 326.5));
}

TEST(TooltipPlacement, treats_each_axis_on_its_own) {
  EXPECT_EQ(topLeft({990, 590}, canvas), QPointF(708, 460));
}

TEST(TooltipPlacement, never_goes_above_or_left_of_eight_on_a_small_canvas) {
  EXPECT_EQ(topLeft({10, 10}, {200, 100}), QPointF(8, 8));
}

}  // namespace
}  // namespace tessaly
