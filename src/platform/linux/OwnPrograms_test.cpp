#include "platform/OwnPrograms.h"

#include <filesystem>
#include <gtest/gtest.h>

#include "support/TempTree.h"

namespace tessaly {
namespace {

TEST(OwnPrograms, stand_beside_the_program_that_runs) {
  const TempTree tree(R"(
    bin/
      tessaly-tools mode=0755
    libexec/
      tessaly/
        tessaly-tools mode=0755
  )");
  EXPECT_EQ(OwnPrograms::pathFrom(tree.at("bin"), "tessaly-tools"), tree.at("bin/tessaly-tools"));
}

TEST(OwnPrograms, stand_in_libexec_where_they_are_not_beside_the_program_that_runs) {
  const TempTree tree(R"(
    bin/
    libexec/
      tessaly/
        tessaly-tools mode=0755
  )");
  EXPECT_TRUE(std::filesystem::equivalent(OwnPrograms::pathFrom(tree.at("bin"), "tessaly-tools"),
                                          tree.at("libexec/tessaly/tessaly-tools")));
}

}  // namespace
}  // namespace tessaly
