// The built executable in place of /usr/bin/mdfind.
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "platform/Process.h"
#include "platform/StandInTools.h"
#include "support/Needs.h"
#include "support/TempTree.h"

namespace tessaly::tools {
namespace {

struct Answer {
  std::string output;
  Process::Exit exit;
};

class MdfindProgramTest : public testing::Test {
 protected:
  TempTree tree_ = TempTree("home/\n  film 400K\n  notes/\n    note 8K\n");

  Answer run(const std::string& path, std::vector<std::string> args) const {
    Result<Process> process =
        Process::launch({.path = path,
                         .args = std::move(args),
                         .cwd = tree_.at("home"),
                         .environment = {{"HOME", tree_.at("home")}, {"PATH", tree_.at("home")}},
                         .output = Process::Stream::captured,
                         .error = Process::Stream::captured});
    EXPECT_TRUE(process.ok());
    if (!process) return {};
    process.value().waitUntil(Deadline::never());
    const std::string output = process.value().readOutput(Deadline::never());
    return {output, *process.value().exit()};
  }
};

TEST_F(MdfindProgramTest, files_are_found_in_place_of_the_real_tool) {
  const Answer answer =
      run("/usr/bin/mdfind", {"-onlyin", tree_.at("home"), "kMDItemFSSize >= 8192"});
  EXPECT_EQ(answer.output, tree_.at("home/film") + "\n" + tree_.at("home/notes/note") + "\n");
  EXPECT_EQ(answer.exit.status, 0);
}

TEST_F(MdfindProgramTest, a_relative_folder_is_that_of_the_caller) {
  const Answer answer = run("/usr/bin/mdfind", {"-onlyin", ".", "-name", "NOTE"});
  EXPECT_EQ(answer.output, tree_.at("home/notes") + "\n" + tree_.at("home/notes/note") + "\n");
  EXPECT_EQ(answer.exit.status, 0);
}

TEST_F(MdfindProgramTest, misuse_and_failure_have_a_status) {
  EXPECT_EQ(run("/usr/bin/mdfind", {}).exit.status, 2);
  for (const char* const seconds : {"soon", "", "0", "-1", "1s", "3601"}) {
    EXPECT_EQ(
        run("/usr/bin/mdfind", {"--within", seconds, "-onlyin", ".", "-name", "a"}).exit.status, 2)
        << seconds;
  }
  EXPECT_EQ(run("/usr/bin/mdfind", {"--within"}).exit.status, 2);
  EXPECT_EQ(run("/usr/bin/mdfind", {"--within", "3600", "-onlyin", ".", "-name", "a"}).exit.status,
            0);
  EXPECT_EQ(run("/usr/bin/mdfind", {"-onlyin", tree_.at("none"), "-name", "a"}).exit.status, 1);
  EXPECT_EQ(run("/usr/bin/mdfind", {"-onlyin", ".", "what"}).exit.status, 1);
  EXPECT_EQ(run("/usr/bin/mdfind", {"--help"}).exit.status, 0);
}

TEST_F(MdfindProgramTest, an_answer_fits_a_pipe_that_nobody_reads_meanwhile) {
  tree_.plant("wide/\n  a-rather-long-name-of-a-film-#### x2000\n");
  const Answer answer =
      run("/usr/bin/mdfind", {"--within", "60", "-onlyin", tree_.at("wide"), "-name", "film"});
  EXPECT_LT(answer.output.size(), 60U * 1024);
  EXPECT_GT(answer.output.size(), 59U * 1024);
  EXPECT_EQ(answer.exit.status, 3);
}

// A folder in the tree is on a file system that never answers. The program ends all the same, and
// prints what it found before.
TEST_F(MdfindProgramTest, a_file_system_that_never_answers_does_not_keep_the_program) {
  tree_.plant("scope/\n  network/\n");
  const Answer answer =
      run(TESSALY_HUNG_FOLDER, {tree_.at("scope/network"), tree_.at("held"),
                                StandInTools::standInFor("/usr/bin/mdfind")->executable, "mdfind",
                                "--within", "1", "-onlyin", tree_.at("scope"), "-name", "network"});
  if (answer.exit.status == 77) GTEST_SKIP() << needs(Need::fuse, "no file system can be mounted");
  EXPECT_EQ(answer.exit.status, 3);
  EXPECT_TRUE(std::filesystem::exists(tree_.at("held")));
}

}  // namespace
}  // namespace tessaly::tools
