// The built executable, started as a person or the program would.
#include <gtest/gtest.h>

#include "platform/Process.h"
#include "platform/StandInTools.h"
#include "platform/linux/UserTrashCan.h"
#include "support/TempTree.h"

namespace tessaly::tools {
namespace {

struct Answer {
  std::string output;
  Process::Exit exit;
};

class ProgramTest : public testing::Test {
 protected:
  TempTree data_ = TempTree(R"(
    Trash/
      files/
        a
        b/
          c
  )");

  Answer run(const std::string& path, std::vector<std::string> args) const {
    Result<Process> process = Process::launch({.path = path,
                                               .args = std::move(args),
                                               .cwd = std::nullopt,
                                               .environment = {{"XDG_DATA_HOME", data_.path()}},
                                               .output = Process::Stream::captured,
                                               .error = Process::Stream::captured});
    EXPECT_TRUE(process.ok());
    if (!process) return {};
    process.value().waitUntil(Deadline::never());
    return {process.value().readOutput(Deadline::never()), *process.value().exit()};
  }

  static std::string program() {
    return StandInTools::standInFor("/usr/bin/osascript")->executable;
  }

  // The tests' machine may have other folders of the user.
  std::string counted() const {
    UserTrashCan::Place place = UserTrashCan::Place::current();
    place.homeTrash = data_.at("Trash");
    const Result<std::int64_t> count = UserTrashCan(place).count();
    EXPECT_TRUE(count.ok());
    EXPECT_GE(count.value(), 2);
    return std::to_string(count.value()) + "\n";
  }
};

constexpr const char* count = "tell application \"Finder\" to count items of trash";
constexpr const char* empty = "tell application \"Finder\" to empty trash";

TEST_F(ProgramTest, counts_the_trash_by_hand) {
  const Answer answer = run(program(), {"osascript", "-e", count});
  EXPECT_EQ(answer.output, counted());
  EXPECT_TRUE(answer.exit.isSuccess());
}

TEST_F(ProgramTest, counts_the_trash_in_place_of_the_given_tool) {
  const Answer answer = run("/usr/bin/osascript", {"-e", count});
  EXPECT_EQ(answer.output, counted());
  EXPECT_TRUE(answer.exit.isSuccess());
}

TEST_F(ProgramTest, deletes_nothing_so_far) {
  const Answer answer = run("/usr/bin/osascript", {"-e", empty});
  EXPECT_EQ(answer.output, "");
  EXPECT_EQ(answer.exit.status, 1);
  EXPECT_EQ(data_.length("Trash/files/b/c"), 0);
}

TEST_F(ProgramTest, helps) {
  EXPECT_TRUE(run(program(), {"--help"}).exit.isSuccess());
  EXPECT_TRUE(run(program(), {"--help"}).output.starts_with("Usage: "));
  EXPECT_TRUE(run(program(), {"osascript", "--help"}).output.starts_with("Usage: "));
}

TEST_F(ProgramTest, is_misused_by_unknown_names) {
  const Answer answer = run(program(), {"unknown"});
  EXPECT_EQ(answer.output, "");
  EXPECT_EQ(answer.exit.status, 2);
}

}  // namespace
}  // namespace tessaly::tools
