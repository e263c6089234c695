#include "platform/OwnExecutable.h"

#include <filesystem>
#include <gtest/gtest.h>

#include "support/TempTree.h"

namespace tessaly {
namespace {

TEST(OwnExecutable, the_own_executable_is_the_running_program) {
  EXPECT_EQ(std::filesystem::path(ownExecutable()).filename(), "tessaly_platform_test");
  EXPECT_TRUE(std::filesystem::exists(ownExecutable()));
}

TEST(OwnExecutable, a_replaced_program_has_its_original_path) {
  const TempTree tree("tessaly\nkept\n");
  EXPECT_EQ(executableFrom(tree.at("tessaly (deleted)"), tree.at("kept")), tree.at("tessaly"));
  EXPECT_EQ(executableFrom(tree.at("tessaly"), tree.at("kept")), tree.at("tessaly"));
}

TEST(OwnExecutable, a_removed_program_has_its_original_path) {
  const TempTree tree("kept\n");
  EXPECT_EQ(executableFrom(tree.at("tessaly (deleted)"), tree.at("kept")), tree.at("tessaly"));
}

TEST(OwnExecutable, a_removed_program_has_its_path_even_if_another_file_has_the_reported_name) {
  const TempTree tree("tessaly\\s(deleted)\nkept\n");
  EXPECT_EQ(executableFrom(tree.at("tessaly (deleted)"), tree.at("kept")), tree.at("tessaly"));
}

TEST(OwnExecutable, a_program_whose_name_ends_in_deleted_keeps_it) {
  const TempTree tree("tessaly\\s(deleted)\nrunning -> tessaly\\s(deleted)\n");
  EXPECT_EQ(executableFrom(tree.at("tessaly (deleted)"), tree.at("running")),
            tree.at("tessaly (deleted)"));
}

TEST(OwnExecutable, the_path_is_empty_if_the_system_does_not_report_it) {
  EXPECT_EQ(executableFrom("", "/proc/self/exe"), "");
}

}  // namespace
}  // namespace tessaly
