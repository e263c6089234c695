#include "app/panes/ByteAxis.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace tessaly {
namespace {

using testing::ElementsAre;

constexpr std::int64_t giga = 1LL << 30U;

std::vector<std::string> textsOf(std::int64_t least, std::int64_t most) {
  std::vector<std::string> texts;
  const ByteAxis axis(least, most);
  for (const ByteAxis::Level& level : axis.levels()) texts.push_back(level.text.toStdString());
  return texts;
}

TEST(ByteAxis, levels_are_round_values_in_one_unit) {
  EXPECT_THAT(textsOf(380 * giga, 415 * giga),
              ElementsAre("380 GB", "390 GB", "400 GB", "410 GB", "420 GB"));
  EXPECT_THAT(textsOf(100 * giga, 1300 * giga),
              ElementsAre("0.0 TB", "0.5 TB", "1.0 TB", "1.5 TB"));
  EXPECT_THAT(textsOf(1, 9), ElementsAre("0 B", "2 B", "4 B", "6 B", "8 B", "10 B"));
}

TEST(ByteAxis, equal_sizes_are_between_two_levels) {
  EXPECT_THAT(textsOf(0, 0), ElementsAre("0 B", "1 B"));
  EXPECT_THAT(textsOf(4, 4), ElementsAre("3 B", "4 B", "5 B"));
  EXPECT_THAT(textsOf(400 * giga, 400 * giga), ElementsAre("398 GB", "400 GB", "402 GB"));
}

TEST(ByteAxis, a_small_change_looks_small) {
  const ByteAxis axis(400 * giga, 400 * giga + 1024);
  EXPECT_GE(axis.high() - axis.low(), static_cast<double>(2 * giga));
}

TEST(ByteAxis, every_axis_contains_its_sizes_and_has_a_few_levels_with_different_texts) {
  const std::int64_t most = std::numeric_limits<std::int64_t>::max();
  std::vector<std::int64_t> sizes = {0, 1, 2, 3, 999, 1023, 1024, 1025, most - 1, most};
  for (std::int64_t size = 1; size < most / 7; size *= 7) {
    sizes.push_back(size);
    sizes.push_back(size + size / 50);
  }
  for (const std::int64_t least : sizes) {
    for (const std::int64_t larger : sizes) {
      if (larger < least) continue;
      const ByteAxis axis(least, larger);
      EXPECT_LE(axis.low(), static_cast<double>(least));
      EXPECT_GE(axis.high(), static_cast<double>(larger) * (1 - 1e-12));
      EXPECT_GE(axis.low(), 0);
      EXPECT_GE(axis.levels().size(), 2U);
      EXPECT_LE(axis.levels().size(), 7U);
      for (std::size_t i = 1; i < axis.levels().size(); ++i)
        EXPECT_NE(axis.levels()[i - 1].text, axis.levels()[i].text) << least << ' ' << larger;
    }
  }
}

}  // namespace
}  // namespace tessaly
