#include "session/CancelFlag.h"

#include <gtest/gtest.h>
#include <thread>

#include "support/Eventually.h"

namespace tessaly {
namespace {

TEST(CancelFlag, the_flag_is_clear_at_first_and_stays_set_once_set) {
  CancelFlag flag;
  EXPECT_FALSE(flag.isSet());
  flag.set();
  EXPECT_TRUE(flag.isSet());
  flag.set();
  EXPECT_TRUE(flag.isSet());
}

TEST(CancelFlag, a_polling_thread_sees_the_flag) {
  CancelFlag flag;
  int writtenBefore = 0;
  int seen = 0;
  std::thread walk([&] {
    eventually([&] { return flag.isSet(); }, "the flag");
    seen = writtenBefore;
  });
  writtenBefore = 7;
  flag.set();
  walk.join();
  EXPECT_EQ(seen, 7);
}

}  // namespace
}  // namespace tessaly
