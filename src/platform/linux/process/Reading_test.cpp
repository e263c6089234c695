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

TEST(Reading, gives_up_past_the_deadline_after_what_is_sure_to_be_there) {
  constexpr std::size_t sure = 65536;
  EXPECT_EQ(readUntil(endless().get(), Deadline::after(0), sure).size(), sure);
  EXPECT_EQ(readUntil(endless().get(), Deadline::after(0), 0).size(), 0U);
}

TEST(Reading, gives_up_where_memory_has_an_end) {
  EXPECT_EQ(readUntil(endless().get(), Deadline::never(), 0).size(), 64U * 1024 * 1024);
}

TEST(Reading, gives_nothing_where_nothing_can_be_read) {
  EXPECT_EQ(readUntil(-1, Deadline::never(), 100), "");
}

}  // namespace
}  // namespace tessaly::process
