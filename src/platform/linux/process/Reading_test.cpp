#include "platform/linux/process/Reading.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include "support/Descriptor.h"

namespace tessaly::process {
namespace {

// Never ends and never blocks.
Descriptor endless() {
  return Descriptor(open("/dev/zero", O_RDONLY | O_CLOEXEC));
}

TEST(Reading, reading_past_the_deadline_ends_after_the_bytes_that_are_surely_available) {
  constexpr std::size_t sure = 65536;
  EXPECT_EQ(readUntil(endless().get(), Deadline::after(0), sure).size(), sure);
  EXPECT_EQ(readUntil(endless().get(), Deadline::after(0), 0).size(), 0U);
}

TEST(Reading, reading_ends_at_the_limit_of_memory) {
  EXPECT_EQ(readUntil(endless().get(), Deadline::never(), 0).size(), 64U * 1024 * 1024);
}

TEST(Reading, reading_from_an_invalid_descriptor_returns_nothing) {
  EXPECT_EQ(readUntil(-1, Deadline::never(), 100), "");
}

}  // namespace
}  // namespace tessaly::process
