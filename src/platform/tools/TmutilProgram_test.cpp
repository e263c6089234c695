// The built executable in place of /usr/bin/tmutil.
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/Process.h"
#include "support/TempTree.h"

namespace tessaly::tools {
namespace {

using testing::StartsWith;

class TmutilProgramTest : public testing::Test {
 protected:
  TempTree tree_;
  std::string output_;

  // The status; the output is in `output_`.
  int run(std::vector<std::string> args) {
    Result<Process> process = Process::launch({.path = "/usr/bin/tmutil",
                                               .args = std::move(args),
                                               .environment = {{"PATH", tree_.path()}},
                                               .output = Process::Stream::captured,
                                               .error = Process::Stream::captured});
    EXPECT_TRUE(process.ok());
    if (!process) return -1;
    process.value().waitUntil(Deadline::never());
    output_ = process.value().readOutput(Deadline::never());
    return process.value().exit()->status;
  }
};

TEST_F(TmutilProgramTest, snapshots_are_listed_in_place_of_the_real_tool) {
  EXPECT_EQ(run({"--machine", tree_.path(), "listlocalsnapshots", "/"}), 0);
  EXPECT_EQ(output_, "Snapshots for disk /:\n");
  tree_.plant(".snapshots/\n  1/\n    snapshot/\n");
  std::ofstream(tree_.at(".snapshots/1/info.xml")) << "<snapshot><num>1</num></snapshot>";
  EXPECT_EQ(run({"--machine", tree_.path(), "listlocalsnapshots", "/"}), 0);
  EXPECT_EQ(output_, "Snapshots for disk /:\nsnapper 1 (in place of com.apple.TimeMachine)\n");
}

TEST_F(TmutilProgramTest, the_disk_of_this_machine_has_a_list_of_snapshots) {
  EXPECT_EQ(run({"listlocalsnapshots", "/"}), 0);
  EXPECT_THAT(output_, StartsWith("Snapshots for disk /:\n"));
}

TEST_F(TmutilProgramTest, thinning_prints_one_line_and_fails) {
  EXPECT_EQ(run({"thinlocalsnapshots", "/", "21474836480", "4"}), 1);
  EXPECT_EQ(output_, "No snapshot was deleted: neither snapper nor timeshift is installed.\n");
  EXPECT_EQ(run({}), 2);
}

}  // namespace
}  // namespace tessaly::tools
