#include "platform/Deadline.h"

#include <gtest/gtest.h>
#include <limits>

namespace tessaly {
namespace {

constexpr int hour = 3600 * 1000;

TEST(Deadline, has_passed_when_no_time_is_given) {
  for (const double seconds : {0.0, -0.0, -1.0, -1e300, -std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_TRUE(Deadline::after(seconds).hasPassed()) << seconds;
    EXPECT_EQ(Deadline::after(seconds).pollTimeout(), 0) << seconds;
  }
}

TEST(Deadline, never_passes_when_it_lies_beyond_all_clocks) {
  for (const double seconds : {1e10, 1e18, 1e300, std::numeric_limits<double>::infinity()}) {
    EXPECT_FALSE(Deadline::after(seconds).hasPassed()) << seconds;
    EXPECT_EQ(Deadline::after(seconds).pollTimeout(), -1) << seconds;
  }
  EXPECT_FALSE(Deadline::never().hasPassed());
  EXPECT_EQ(Deadline::never().pollTimeout(), -1);
}

TEST(Deadline, has_not_passed_while_time_is_left) {
  EXPECT_FALSE(Deadline::after(600).hasPassed());
  EXPECT_GT(Deadline::after(600).pollTimeout(), 0);
  EXPECT_LE(Deadline::after(600).pollTimeout(), 600 * 1000);
}

TEST(Deadline, is_waited_for_in_stretches_of_an_hour) {
  EXPECT_EQ(Deadline::after(1e9).pollTimeout(), hour);
  EXPECT_EQ(Deadline::after(2.0 * 3600).pollTimeout(), hour);
}

TEST(Deadline, is_waited_for_to_its_end) {
  const Deadline deadline = Deadline::after(0.002);
  while (deadline.pollTimeout() > 0) EXPECT_LE(deadline.pollTimeout(), 2);
  EXPECT_TRUE(deadline.hasPassed());
}

}  // namespace
}  // namespace tessaly
