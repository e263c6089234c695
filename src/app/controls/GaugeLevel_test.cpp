#include "app/controls/GaugeLevel.h"

#include <gtest/gtest.h>
#include <limits>

#include "look/MarrowTheme.h"

namespace tessaly {
namespace {

TEST(GaugeLevel, the_level_is_warning_from_75_and_error_from_90) {
  EXPECT_EQ(Gauge::levelFor(-5), GaugeLevel::success);
  EXPECT_EQ(Gauge::levelFor(0), GaugeLevel::success);
  EXPECT_EQ(Gauge::levelFor(74.9), GaugeLevel::success);
  EXPECT_EQ(Gauge::levelFor(75), GaugeLevel::warning);
  EXPECT_EQ(Gauge::levelFor(89.9), GaugeLevel::warning);
  EXPECT_EQ(Gauge::levelFor(90), GaugeLevel::error);
  EXPECT_EQ(Gauge::levelFor(100), GaugeLevel::error);
  EXPECT_EQ(Gauge::levelFor(150), GaugeLevel::error);
}

TEST(GaugeLevel, each_level_has_its_colour) {
  EXPECT_EQ(Gauge::levelColor(GaugeLevel::success), MarrowTheme::success);
  EXPECT_EQ(Gauge::levelColor(GaugeLevel::warning), MarrowTheme::warning);
  EXPECT_EQ(Gauge::levelColor(GaugeLevel::error), MarrowTheme::error);
}

TEST(Gauge, the_percentage_is_mapped_to_seven_tenths_of_the_circle) {
  EXPECT_DOUBLE_EQ(Gauge::arcEnd(10), 0.22);
  EXPECT_DOUBLE_EQ(Gauge::arcEnd(50), 0.5);
  EXPECT_DOUBLE_EQ(Gauge::arcEnd(100), 0.85);
}

TEST(Gauge, the_arc_is_empty_at_0_and_full_above_100) {
  EXPECT_EQ(Gauge::arcEnd(0), 0.15);
  EXPECT_EQ(Gauge::arcEnd(-20), 0.15);
  EXPECT_EQ(Gauge::arcEnd(100.1), 0.85);
  EXPECT_EQ(Gauge::arcEnd(150), 0.85);
}

TEST(Gauge, nan_counts_as_0) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(Gauge::levelFor(nan), GaugeLevel::success);
  EXPECT_EQ(Gauge::arcEnd(nan), 0.15);
}

}  // namespace
}  // namespace tessaly
