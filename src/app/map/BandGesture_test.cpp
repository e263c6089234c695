#include "app/map/BandGesture.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(BandGesture, there_is_no_band_before_the_pointer_has_moved_8_points) {
  BandGesture gesture;
  gesture.press({100, 100});
  EXPECT_TRUE(gesture.isPressed());
  EXPECT_FALSE(gesture.moveTo({107.9, 100}));
  EXPECT_FALSE(gesture.moveTo({105.6, 105.6}));  // distance 7.92
  EXPECT_EQ(gesture.band(), std::nullopt);
  EXPECT_TRUE(gesture.moveTo({100, 108}));
  EXPECT_EQ(gesture.band(), (Rect{100, 100, 0, 8}));
}

TEST(BandGesture, the_band_extends_from_the_press_to_the_pointer_in_every_direction) {
  BandGesture gesture;
  gesture.press({100, 200});
  gesture.moveTo({130, 240});
  EXPECT_EQ(gesture.band(), (Rect{100, 200, 30, 40}));
  gesture.moveTo({70, 160});
  EXPECT_EQ(gesture.band(), (Rect{70, 160, 30, 40}));
  gesture.moveTo({-5, 210});
  EXPECT_EQ(gesture.band(), (Rect{-5, 200, 105, 10}));
}

TEST(BandGesture, the_band_stays_when_the_pointer_returns) {
  BandGesture gesture;
  gesture.press({100, 100});
  gesture.moveTo({150, 150});
  EXPECT_TRUE(gesture.moveTo({101, 101}));
  EXPECT_EQ(gesture.band(), (Rect{100, 100, 1, 1}));
}

TEST(BandGesture, a_new_band_needs_a_press) {
  BandGesture gesture;
  EXPECT_FALSE(gesture.moveTo({50, 50}));
  gesture.press({100, 100});
  gesture.moveTo({150, 150});
  gesture.end();
  EXPECT_EQ(gesture.band(), std::nullopt);
  EXPECT_FALSE(gesture.isPressed());
  EXPECT_FALSE(gesture.moveTo({200, 200}));
  gesture.press({200, 200});
  EXPECT_FALSE(gesture.isDragging());
  EXPECT_FALSE(gesture.moveTo({201, 201}));
}

}  // namespace
}  // namespace tessaly
