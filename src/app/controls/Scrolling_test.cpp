#include "app/controls/Scrolling.h"

#include <gtest/gtest.h>

#include "app/controls/ControlScene.h"

namespace tessaly {
namespace {

TEST(ScrollPlace, the_position_is_limited_to_the_content) {
  const Scrolling::Extent extent{.origin = -20, .content = 500, .view = 200};
  EXPECT_EQ(Scrolling::placeNear(100, extent), 100);
  EXPECT_EQ(Scrolling::placeNear(-300, extent), -20);
  EXPECT_EQ(Scrolling::placeNear(900, extent), 280);
}

TEST(ScrollPlace, content_that_is_too_short_to_scroll_stays_at_its_beginning) {
  EXPECT_EQ(Scrolling::placeNear(50, {.origin = 0, .content = 100, .view = 200}), 0);
  EXPECT_EQ(Scrolling::placeNear(50, {.origin = 7, .content = 0, .view = 200}), 7);
}

TEST(WheelDistance, the_distance_is_the_pixels_or_half_the_angle) {
  EXPECT_EQ(Scrolling::distanceOf(-25, -120), 25);
  EXPECT_EQ(Scrolling::distanceOf(0, -120), 60);
  EXPECT_EQ(Scrolling::distanceOf(0, 120), -60);
}

class NestedScrolling : public testing::Test {
 protected:
  QQuickItem* outer() { return scene_.control(); }
  QQuickItem* inner() { return scene_.find("inner"); }
  static double placeOf(QQuickItem* view) { return view->property("contentY").toDouble(); }

  ControlScene scene_{
      "Flickable { width: 200; height: 200; contentWidth: 200; contentHeight: 1000\n"
      "Flickable { objectName: 'inner'; width: 200; height: 100; contentHeight: 150 } }"};
};

TEST_F(NestedScrolling, the_inner_view_scrolls_to_its_end_and_then_the_outer_one) {
  Scrolling::turn(inner(), outer(), 0, -80);
  EXPECT_EQ(placeOf(inner()), 40);
  Scrolling::turn(inner(), outer(), 0, -80);
  EXPECT_EQ(placeOf(inner()), 50);
  EXPECT_EQ(placeOf(outer()), 0);
  Scrolling::turn(inner(), outer(), 0, -80);
  EXPECT_EQ(placeOf(inner()), 50);
  EXPECT_EQ(placeOf(outer()), 40);
  Scrolling::turn(inner(), outer(), 0, 200);
  EXPECT_EQ(placeOf(inner()), 0);
  EXPECT_EQ(placeOf(outer()), 40);
}

TEST_F(NestedScrolling, a_view_without_an_outer_one_stops_at_its_end) {
  Scrolling::turn(inner(), nullptr, 0, -800);
  Scrolling::turn(inner(), nullptr, 0, -800);
  EXPECT_EQ(placeOf(inner()), 50);
}

TEST_F(NestedScrolling, moving_returns_whether_the_view_moved) {
  EXPECT_TRUE(Scrolling::moveTo(inner(), 500));
  EXPECT_FALSE(Scrolling::moveTo(inner(), 600));
  EXPECT_FALSE(Scrolling::moveTo(nullptr, 10));
}

}  // namespace
}  // namespace tessaly
