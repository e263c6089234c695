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
  TempTree tree("tessaly\n");
  EXPECT_EQ(executableFrom(tree.at("tessaly (deleted)")), tree.at("tessaly"));
  EXPECT_EQ(executableFrom(tree.at("tessaly")), tree.at("tessaly"));
}

TEST(OwnExecutable, may_be_called_deleted) {
  TempTree tree("tessaly\\s(deleted)\n");
  EXPECT_EQ(executableFrom(tree.at("tessaly (deleted)")), tree.at("tessaly (deleted)"));
}

}  // namespace
}  // namespace tessaly
