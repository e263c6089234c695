#include "scan/Percent.h"

#include <gtest/gtest.h>
#include <limits>

namespace tessaly {
namespace {

TEST(PercentCut, a_cut_percentage_has_no_decimals_and_is_never_rounded_up) {
  EXPECT_EQ(Percent::cut(0), "0%");
  EXPECT_EQ(Percent::cut(0.9), "0%");
  EXPECT_EQ(Percent::cut(74.9), "74%");
  EXPECT_EQ(Percent::cut(99.99), "99%");
  EXPECT_EQ(Percent::cut(100), "100%");
  // Below 29 as a double.
  EXPECT_EQ(Percent::cut(0.29 * 100), "28%");
}

TEST(PercentCut, a_cut_percentage_is_between_0_and_100) {
  EXPECT_EQ(Percent::cut(-3), "0%");
  EXPECT_EQ(Percent::cut(150), "100%");
  EXPECT_EQ(Percent::cut(std::numeric_limits<double>::infinity()), "100%");
  EXPECT_EQ(Percent::cut(std::numeric_limits<double>::quiet_NaN()), "0%");
}

TEST(PercentRounded, a_rounded_percentage_is_the_nearest_whole_number_and_even_in_a_tie) {
  EXPECT_EQ(Percent::rounded(0.4), "0%");
  EXPECT_EQ(Percent::rounded(74.6), "75%");
  EXPECT_EQ(Percent::rounded(12.5), "12%");
  EXPECT_EQ(Percent::rounded(13.5), "14%");
  EXPECT_EQ(Percent::rounded(99.9), "100%");
}

TEST(PercentRounded, a_rounded_percentage_has_no_limits) {
  EXPECT_EQ(Percent::rounded(-3), "-3%");
  EXPECT_EQ(Percent::rounded(150), "150%");
}

}  // namespace
}  // namespace tessaly
