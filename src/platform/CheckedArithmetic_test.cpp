#include "platform/CheckedArithmetic.h"

#include <gtest/gtest.h>
#include <limits>

namespace tessaly {
namespace {

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();

TEST(CheckedArithmetic, checked_arithmetic_is_exact_up_to_the_limits) {
  EXPECT_EQ(checkedAdd(2, -5), -3);
  EXPECT_EQ(checkedAdd(largest - 1, 1), largest);
  EXPECT_EQ(checkedAdd(smallest, largest), -1);
  EXPECT_EQ(checkedMul(-3, 4), -12);
  EXPECT_EQ(checkedMul(largest, 1), largest);
  EXPECT_EQ(checkedMul(smallest / 2, 2), smallest);
}

TEST(CheckedArithmeticDeath, an_overflow_ends_the_program_and_names_the_operands) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(checkedAdd(largest, 1), "size overflow: 9223372036854775807 \\+ 1");
  EXPECT_DEATH(checkedAdd(smallest, -1), "size overflow: -9223372036854775808 \\+ -1");
  EXPECT_DEATH(checkedMul(largest, 2), "size overflow: 9223372036854775807 \\* 2");
  EXPECT_DEATH(checkedMul(smallest, -1), "size overflow: -9223372036854775808 \\* -1");
}

}  // namespace
}  // namespace tessaly
