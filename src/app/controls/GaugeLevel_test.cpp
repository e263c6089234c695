#include "app/controls/GaugeLevel.h"

#include <gtest/gtest.h>
#include <limits>

#include "look/MarrowTheme.h"

namespace tessaly {
namespace {

TEST(GaugeLevel, turns_to_warning_at_75_and_to_error_at_90) {
  EXPECT_EQ(Gauge::levelFor(-5), GaugeLevel::success);
  EXPECT_EQ(Gauge::levelFor(0), GaugeLevel::success);
  EXPECT_EQ(Gauge::levelFor(74.9), GaugeLevel::success);
  EXPECT_EQ(Gauge::levelFor(75), GaugeLevel::warning);
  EXPECT_EQ(Gauge::levelFor(89.9), GaugeLevel::warning);
  EXPECT_EQ(Gauge::levelFor(90), GaugeLevel::error);
  EXPECT_EQ(Gauge::levelFor(100), GaugeLevel::error);
  EXPECT_EQ(Gauge::levelFor(150), GaugeLevel::error);
}

TEST(GaugeLevel, has_the_colour_of_its_name) {
  EXPECT_EQ(Gauge::levelColor(GaugeLevel::success), MarrowTheme::success);
  EXPECT_EQ(Gauge::levelColor(GaugeLevel::warning), MarrowTheme::warning);
  EXPECT_EQ(Gauge::levelColor(GaugeLevel::error), MarrowTheme::error);
}

TEST(Gauge, spreads_the_percentage_over_seven_tenths_of_the_circle) {
  EXPECT_DOUBLE_EQ(Gauge::arcEnd(10), 0.22);
  EXPECT_DOUBLE_EQ(Gauge::arcEnd(50), 0.5);
  EXPECT_DOUBLE_EQ(Gauge::arcEnd(100), 0.85);
}

TEST(Gauge, has_no_arc_at_nothing_and_the_full_arc_beyond_everything) {
  EXPECT_EQ(Gauge::arcEnd(0), 0.15);
  EXPECT_EQ(Gauge::arcEnd(-20), 0.15);
  EXPECT_EQ(Gauge::arcEnd(100.1), 0.85);
  EXPECT_EQ(Gauge::arcEnd(150), 0.85);
}

TEST(Gauge, takes_what_is_no_number_for_nothing) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(Gauge::levelFor(nan), GaugeLevel::success);
  EXPECT_EQ(Gauge::arcEnd(nan), 0.15);
}

}  // namespace
}  // namespace tessaly
