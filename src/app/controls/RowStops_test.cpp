#include "app/controls/RowStops.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

using RowStops::stopAt;

// A wide button, a narrow one, a wide one.
const std::vector<RowStops::Span> row = {{0, 100}, {106, 126}, {132, 232}};

TEST(RowStops, a_row_stops_anywhere_if_enough_of_a_button_is_visible) {
  for (const double x : {0.0, 30.0, 60.0, 100.0, 103.0, 106.0, 126.0, 132.0, 170.0, 192.0}) {
    EXPECT_EQ(stopAt(x, row, true), x);
    EXPECT_EQ(stopAt(x, row, false), x);
  }
}

TEST(RowStops, a_row_does_not_stop_where_it_would_cut_a_button_to_a_letter) {
  for (const double x : {60.5, 80.0, 99.0}) {
    EXPECT_EQ(stopAt(x, row, true), 100) << x;
    EXPECT_EQ(stopAt(x, row, false), 60) << x;
  }
  EXPECT_EQ(stopAt(231.5, row, true), 232);
}

TEST(RowStops, a_row_shows_a_narrow_button_completely_or_not_at_all) {
  EXPECT_EQ(stopAt(107, row, true), 126);
  EXPECT_EQ(stopAt(107, row, false), 106);
}

TEST(RowStops, a_row_without_buttons_stops_anywhere) {
  EXPECT_EQ(stopAt(50, {}, true), 50);
}

}  // namespace
}  // namespace tessaly
