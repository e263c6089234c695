#include "app/map/TooltipPlacement.h"

#include <gtest/gtest.h>

#include <QRectF>

namespace tessaly {
namespace {

constexpr QSizeF canvas(1000, 600);

// For a panel with the fixed height.
QPointF topLeft(QPointF mouse, QSizeF size) {
  return TooltipPlacement::topLeft(mouse, size, 118);
}

TEST(TooltipPlacement, the_panel_is_to_the_lower_right_of_the_pointer) {
  EXPECT_EQ(topLeft({100, 200}, canvas), QPointF(116, 218));
}

TEST(TooltipPlacement, the_panel_flips_to_the_left_near_the_right_edge) {
  // 706 + 16 + 270 is 992, which still fits.
  EXPECT_EQ(topLeft({706, 200}, canvas), QPointF(722, 218));
  EXPECT_EQ(topLeft({706.5, 200}, canvas), QPointF(424.5, 218));
}

TEST(TooltipPlacement, the_panel_flips_upward_near_the_lower_edge) {
  // 456 + 18 + 118 is 592, which still fits.
  EXPECT_EQ(topLeft({100, 456}, canvas), QPointF(116, 474));
  EXPECT_EQ(topLeft({100, 456.5}, canvas), QPointF(116, 326.5));
}

TEST(TooltipPlacement, each_axis_is_decided_separately) {
  EXPECT_EQ(topLeft({990, 590}, canvas), QPointF(708, 460));
}

TEST(TooltipPlacement, a_panel_above_the_fixed_height_is_moved_back) {
  EXPECT_EQ(TooltipPlacement::topLeft({100, 456}, canvas, 150), QPointF(116, 600 - 8 - 150));
  EXPECT_EQ(TooltipPlacement::topLeft({100, 590}, canvas, 150), QPointF(116, 600 - 8 - 150));
  EXPECT_EQ(TooltipPlacement::topLeft({100, 300}, canvas, 150), QPointF(116, 318));
  // A panel below the fixed height stays where that has placed it.
  EXPECT_EQ(TooltipPlacement::topLeft({100, 590}, canvas, 90), QPointF(116, 460));
}

TEST(TooltipPlacement, the_panel_is_on_the_canvas_for_each_position_of_the_pointer) {
  const QRectF room = QRectF(QPointF(), canvas).adjusted(8, 8, -8, -8);
  for (const double height : {90.0, 118.0, 131.0, 240.0, 584.0}) {
    for (double y = 0; y <= 600; y += 7.5) {
      for (double x = 0; x <= 1000; x += 12.5) {
        const QRectF panel(TooltipPlacement::topLeft({x, y}, canvas, height), QSizeF(270, height));
        ASSERT_TRUE(room.contains(panel)) << x << ", " << y << " with " << height;
      }
    }
  }
}

TEST(TooltipPlacement, the_panel_stays_eight_from_the_upper_and_left_edge_of_a_small_canvas) {
  EXPECT_EQ(topLeft({10, 10}, {200, 100}), QPointF(8, 8));
  EXPECT_EQ(TooltipPlacement::topLeft({500, 300}, canvas, 590).y(), 8);
}

}  // namespace
}  // namespace tessaly
