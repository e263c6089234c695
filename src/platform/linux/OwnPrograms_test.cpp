#include "platform/OwnPrograms.h"

#include <filesystem>
#include <gtest/gtest.h>

#include "support/TempTree.h"

namespace tessaly {
namespace {

TEST(OwnPrograms, a_program_beside_the_running_one_is_found_first) {
  const TempTree tree(R"(
    bin/
      tessaly-tools mode=0755
    libexec/
      tessaly/
        tessaly-tools mode=0755
  )");
  EXPECT_EQ(OwnPrograms::pathFrom(tree.at("bin"), "tessaly-tools"), tree.at("bin/tessaly-tools"));
}

TEST(OwnPrograms, a_program_in_libexec_is_found_otherwise) {
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
