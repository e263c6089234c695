#include "platform/RunningApplication.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(RunningApplication, the_running_application_is_the_executable_of_this_process) {
  EXPECT_EQ(runningApplicationPath(), std::filesystem::read_symlink("/proc/self/exe"));
}

}  // namespace
}  // namespace tessaly
