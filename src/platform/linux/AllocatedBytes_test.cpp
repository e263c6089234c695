#include "platform/linux/AllocatedBytes.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

constexpr std::uint64_t most = std::numeric_limits<std::int64_t>::max() / 512;

TEST(AllocatedBytes, each_block_counts_512_bytes_up_to_the_largest_size) {
  EXPECT_EQ(bytesOfBlocks(0), 0);
  EXPECT_EQ(bytesOfBlocks(8), 4096);
  EXPECT_EQ(bytesOfBlocks(most), std::numeric_limits<std::int64_t>::max() - 511);
}

TEST(AllocatedBytesDeath, blocks_beyond_the_largest_size_end_the_program) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  // Without the check these would give 0 and -512.
  EXPECT_DEATH(bytesOfBlocks(most + 1), "size overflow");
  EXPECT_DEATH(bytesOfBlocks(std::uint64_t{1} << 55U), "size overflow");
  EXPECT_DEATH(bytesOfBlocks(std::numeric_limits<std::uint64_t>::max()), "size overflow");
}

}  // namespace
}  // namespace tessaly
