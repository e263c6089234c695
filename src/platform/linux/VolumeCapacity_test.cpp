#include "platform/VolumeCapacity.h"

#include <gtest/gtest.h>
#include <limits>

#include "platform/linux/StatvfsCapacity.h"

namespace tessaly {
namespace {

struct statvfs figures(fsblkcnt_t blocks, fsblkcnt_t available, unsigned long fragment) {
  struct statvfs made = {};
  made.f_bsize = 1;
  made.f_frsize = fragment;
  made.f_blocks = blocks;
  made.f_bfree = available + 5;
  made.f_bavail = available;
  return made;
}

TEST(VolumeCapacity, blocks_are_counted_in_fragments_without_those_reserved_for_root) {
  const VolumeCapacity capacity = capacityFrom(figures(1000, 300, 4096));
  EXPECT_EQ(capacity.total, 4096000);
  EXPECT_EQ(capacity.available, 1228800);
}

TEST(VolumeCapacity, purgeable_space_is_unknown) {
  const VolumeCapacity capacity = capacityFrom(figures(1000, 300, 4096));
  EXPECT_EQ(capacity.availableForImportantUsage, std::nullopt);
  EXPECT_EQ(capacity.availableForOpportunisticUsage, std::nullopt);
}

TEST(VolumeCapacity, an_impossible_figure_is_absent_and_the_other_one_stays) {
  constexpr fsblkcnt_t all = std::numeric_limits<fsblkcnt_t>::max();
  EXPECT_EQ(capacityFrom(figures(all, 300, 4096)).total, std::nullopt);
  EXPECT_EQ(capacityFrom(figures(all, 300, 4096)).available, 1228800);
  EXPECT_EQ(capacityFrom(figures(1000, all - 5, 4096)).available, std::nullopt);
  EXPECT_EQ(capacityFrom(figures(1000, all - 5, 4096)).total, 4096000);
  // One byte more than a signed 64-bit figure holds, and the largest it holds.
  EXPECT_EQ(capacityFrom(figures(std::uint64_t{1} << 51U, 0, 4096)).total, std::nullopt);
  EXPECT_EQ(capacityFrom(figures((std::uint64_t{1} << 51U) - 1, 0, 4096)).total,
            std::numeric_limits<std::int64_t>::max() - 4095);
}

TEST(VolumeCapacity, a_file_system_without_blocks_has_no_bytes) {
  EXPECT_EQ(capacityFrom(figures(0, 0, 4096)).total, 0);
  EXPECT_EQ(capacityFrom(figures(0, 0, 0)).available, 0);
}

TEST(VolumeCapacity, the_root_has_a_size_and_no_more_free_space_than_that) {
  const Result<VolumeCapacity> capacity = volumeCapacity("/");
  ASSERT_TRUE(capacity);
  ASSERT_TRUE(capacity.value().total);
  ASSERT_TRUE(capacity.value().available);
  EXPECT_GT(*capacity.value().total, 0);
  EXPECT_GE(*capacity.value().available, 0);
  EXPECT_LE(*capacity.value().available, *capacity.value().total);
}

TEST(VolumeCapacity, the_capacity_is_that_of_the_volume_that_contains_the_path) {
  // /proc is a volume of size 0 on every machine.
  const Result<VolumeCapacity> capacity = volumeCapacity("/proc/self");
  ASSERT_TRUE(capacity);
  EXPECT_EQ(capacity.value().total, 0);
}

TEST(VolumeCapacity, a_missing_path_is_an_error_that_names_it) {
  const Result<VolumeCapacity> capacity = volumeCapacity("/nowhere/at/all");
  ASSERT_FALSE(capacity);
  EXPECT_EQ(capacity.error().kind, SystemError::Kind::notFound);
  EXPECT_EQ(capacity.error().path, "/nowhere/at/all");
}

}  // namespace
}  // namespace tessaly
