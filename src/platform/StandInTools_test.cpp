#include "platform/StandInTools.h"

#include <filesystem>
#include <gtest/gtest.h>

#include "platform/OwnPrograms.h"

namespace tessaly {
namespace {

TEST(StandInTools, tools_of_another_system_have_a_stand_in) {
  const auto program = std::filesystem::read_symlink("/proc/self/exe");
  const std::string executable = OwnPrograms::pathFrom(program.parent_path(), "tessaly-tools");
  for (const std::string name : {"mdfind", "open", "osascript", "tmutil"}) {
    EXPECT_EQ(StandInTools::standInFor("/usr/bin/" + name),
              (StandInTools::StandIn{.executable = executable, .subcommand = name}));
  }
}

TEST(StandInTools, real_tools_and_other_paths_have_no_stand_in) {
  for (const char* tool : {"/usr/bin/du", "/bin/df", "/usr/bin/zip", "osascript", "/bin/osascript",
                           "/usr/bin/osascript ", "/usr/bin//osascript", ""}) {
    EXPECT_EQ(StandInTools::standInFor(tool), std::nullopt) << tool;
  }
}

}  // namespace
}  // namespace tessaly
