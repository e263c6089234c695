#include "platform/StandInTools.h"

#include <filesystem>
#include <gtest/gtest.h>

#include "support/TempTree.h"

namespace tessaly {
namespace {

TEST(StandInTools, answer_for_the_tools_of_another_system) {
  const auto program = std::filesystem::read_symlink("/proc/self/exe");
  const std::string executable = StandInTools::executableFrom(program.parent_path());
  for (const std::string name : {"open", "osascript"}) {
    EXPECT_EQ(StandInTools::standInFor("/usr/bin/" + name),
              (StandInTools::StandIn{.executable = executable, .subcommand = name}));
  }
}

TEST(StandInTools, leave_real_tools_and_other_paths_alone) {
  for (const char* tool : {"/usr/bin/du", "/bin/df", "/usr/bin/zip", "osascript", "/bin/osascript",
                           "/usr/bin/osascript ", "/usr/bin//osascript", ""}) {
    EXPECT_EQ(StandInTools::standInFor(tool), std::nullopt) << tool;
  }
}

TEST(StandInTools, stand_beside_the_program) {
  const TempTree tree(R"(
    bin/
      tessaly-tools mode=0755
    libexec/
      tessaly/
        tessaly-tools mode=0755
  )");
  EXPECT_EQ(StandInTools::executableFrom(tree.at("bin")), tree.at("bin/tessaly-tools"));
}

TEST(StandInTools, stand_in_libexec_where_they_are_not_beside_the_program) {
  const TempTree tree(R"(
    bin/
    libexec/
      tessaly/
        tessaly-tools mode=0755
  )");
  EXPECT_TRUE(std::filesystem::equivalent(StandInTools::executableFrom(tree.at("bin")),
                                          tree.at("libexec/tessaly/tessaly-tools")));
}

}  // namespace
}  // namespace tessaly
