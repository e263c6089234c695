#include "platform/Deadline.h"

#include <gtest/gtest.h>
#include <limits>

namespace tessaly {
namespace {

constexpr int hour = 3600 * 1000;

TEST(Deadline, a_deadline_without_a_positive_time_has_passed) {
  for (const double seconds : {0.0, -0.0, -1.0, -1e300, -std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_TRUE(Deadline::after(seconds).hasPassed()) << seconds;
    EXPECT_EQ(Deadline::after(seconds).pollTimeout(), 0) << seconds;
  }
}

TEST(Deadline, a_deadline_beyond_the_range_of_the_clock_never_passes) {
  for (const double seconds : {1e10, 1e18, 1e300, std::numeric_limits<double>::infinity()}) {
    EXPECT_FALSE(Deadline::after(seconds).hasPassed()) << seconds;
    EXPECT_EQ(Deadline::after(seconds).pollTimeout(), -1) << seconds;
  }
  EXPECT_FALSE(Deadline::never().hasPassed());
  EXPECT_EQ(Deadline::never().pollTimeout(), -1);
}

TEST(Deadline, a_deadline_has_not_passed_while_time_is_left) {
  EXPECT_FALSE(Deadline::after(600).hasPassed());
  EXPECT_GT(Deadline::after(600).pollTimeout(), 0);
  EXPECT_LE(Deadline::after(600).pollTimeout(), 600 * 1000);
}

TEST(Deadline, one_wait_for_a_deadline_lasts_at_most_an_hour) {
  EXPECT_EQ(Deadline::after(1e9).pollTimeout(), hour);
  EXPECT_EQ(Deadline::after(2.0 * 3600).pollTimeout(), hour);
}

TEST(Deadline, the_waits_for_a_deadline_last_until_it_has_passed) {
  const Deadline deadline = Deadline::after(0.002);
  while (deadline.pollTimeout() > 0) EXPECT_LE(deadline.pollTimeout(), 2);
  EXPECT_TRUE(deadline.hasPassed());
}

}  // namespace
}  // namespace tessaly
