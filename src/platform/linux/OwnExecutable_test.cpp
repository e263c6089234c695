#include "platform/OwnExecutable.h"

#include <filesystem>
#include <gtest/gtest.h>

#include "support/TempTree.h"

namespace tessaly {
namespace {

TEST(OwnExecutable, is_the_program_that_runs) {
  EXPECT_EQ(std::filesystem::path(ownExecutable()).filename(), "tessaly_platform_test");
  EXPECT_TRUE(std::filesystem::exists(ownExecutable()));
}

TEST(OwnExecutable, is_where_a_replaced_program_was) {
  const TempTree tree("tessaly\nkept\n");
  EXPECT_EQ(executableFrom(tree.at("tessaly (deleted)"), tree.at("kept")), tree.at("tessaly"));
  EXPECT_EQ(executableFrom(tree.at("tessaly"), tree.at("kept")), tree.at("tessaly"));
}

TEST(OwnExecutable, is_where_a_removed_program_was) {
  const TempTree tree("kept\n");
  EXPECT_EQ(executableFrom(tree.at("tessaly (deleted)"), tree.at("kept")), tree.at("tessaly"));
}

TEST(OwnExecutable, is_where_it_was_although_another_file_has_the_name_that_the_system_tells) {
  const TempTree tree("tessaly\\s(deleted)\nkept\n");
  EXPECT_EQ(executableFrom(tree.at("tessaly (deleted)"), tree.at("kept")), tree.at("tessaly"));
}

TEST(OwnExecutable, may_be_called_deleted) {
  const TempTree tree("tessaly\\s(deleted)\nrunning -> tessaly\\s(deleted)\n");
  EXPECT_EQ(executableFrom(tree.at("tessaly (deleted)"), tree.at("running")),
            tree.at("tessaly (deleted)"));
}

TEST(OwnExecutable, is_empty_when_the_system_does_not_tell) {
  EXPECT_EQ(executableFrom("", "/proc/self/exe"), "");
}

}  // namespace
}  // namespace tessaly
