#include "platform/RunningApplication.h"

#include <filesystem>
#include <gtest/gtest.h>

#include "support/TempTree.h"

namespace tessaly {
namespace {

TEST(RunningApplication, is_the_executable_of_this_process) {
  EXPECT_EQ(runningApplicationPath(), std::filesystem::read_symlink("/proc/self/exe"));
}

TEST(RunningApplication, is_where_it_was_after_its_file_has_gone) {
  const TempTree folder("kept\n");
  EXPECT_EQ(runningApplicationPathFrom(folder.at("tool (deleted)"), folder.at("kept")),
            folder.at("tool"));
}

TEST(RunningApplication, is_where_it_was_after_its_file_has_been_replaced) {
  const TempTree folder("tool\nkept\n");
  EXPECT_EQ(runningApplicationPathFrom(folder.at("tool (deleted)"), folder.at("kept")),
            folder.at("tool"));
}

TEST(RunningApplication, keeps_a_name_that_only_looks_as_if_the_file_had_gone) {
  const TempTree folder("tool\\s(deleted)\nrunning -> tool\\s(deleted)\n");
  EXPECT_EQ(runningApplicationPathFrom(folder.at("tool (deleted)"), folder.at("running")),
            folder.at("tool (deleted)"));
}

TEST(RunningApplication, is_empty_when_nobody_tells) {
  EXPECT_EQ(runningApplicationPathFrom("", "/proc/self/exe"), "");
}

}  // namespace
}  // namespace tessaly
