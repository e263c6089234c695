// The built executable, started by hand or by the program.
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/mount.h>

#include "platform/Process.h"
#include "platform/StandInTools.h"
#include "platform/linux/UserTrashCan.h"
#include "support/PrivateMounts.h"
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

  // Makes all file systems read-only for this process and its children.
  static bool makeAllReadOnly() {
    mount_attr attributes{};
    attributes.attr_set = MOUNT_ATTR_RDONLY;
    return ::mount_setattr(AT_FDCWD, "/", AT_RECURSIVE, &attributes, sizeof attributes) == 0;
  }

  static std::string program() {
    return StandInTools::standInFor("/usr/bin/osascript")->executable;
  }

  // The machine that runs the tests may have other Trash folders of the user.
  std::string counted() const {
    TrashConfig config = TrashConfig::current();
    config.homeTrash = data_.at("Trash");
    const Result<std::int64_t> count = UserTrashCan(config).count();
    EXPECT_TRUE(count.ok());
    EXPECT_GE(count.value(), 2);
    return std::to_string(count.value()) + "\n";
  }
};

constexpr const char* count = "tell application \"Finder\" to count items of trash";
constexpr const char* empty = "tell application \"Finder\" to empty trash";

TEST_F(ProgramTest, the_program_counts_the_trash_if_started_by_hand) {
  const Answer answer = run(program(), {"osascript", "-e", count});
  EXPECT_EQ(answer.output, counted());
  EXPECT_TRUE(answer.exit.isSuccess());
}

TEST_F(ProgramTest, the_program_counts_the_trash_in_place_of_the_real_tool) {
  const Answer answer = run("/usr/bin/osascript", {"-e", count});
  EXPECT_EQ(answer.output, counted());
  EXPECT_TRUE(answer.exit.isSuccess());
}

// This would empty every Trash of the user who runs the tests, so everything except the test's own
// Trash is made read-only first.
TEST_F(ProgramTest, the_program_empties_the_trash_in_place_of_the_real_tool) {
  const std::string told = inPrivateMounts([&]() -> std::string {
    if (!makeAllReadOnly()) return refusal();
    if (::mount("tmpfs", data_.path().c_str(), "tmpfs", 0, nullptr) != 0) return refusal();
    TrashConfig config = TrashConfig::current();
    config.homeTrash = data_.at("Trash");
    if (UserTrashCan(config).count().value() != 0) return "refused: there is a Trash elsewhere";
    data_.plant("Trash/\n  files/\n    a\n    b/\n      c\n  info/\n    a.trashinfo\n");
    const Answer answer = run("/usr/bin/osascript", {"-e", empty});
    if (!answer.exit.isSuccess()) return "status " + std::to_string(answer.exit.status);
    if (!answer.output.empty()) return answer.output;
    const auto isEmpty = [&](const char* part) {
      return std::filesystem::is_empty(data_.at(part));
    };
    return isEmpty("Trash/files") && isEmpty("Trash/info") ? "" : "something is left";
  });
  if (told.starts_with("refused")) GTEST_SKIP() << told;
  EXPECT_EQ(told, "");
}

// The application sends SIGTERM at its time limit.
TEST_F(ProgramTest, emptying_is_completed_even_after_sigterm) {
  const std::string told = inPrivateMounts([&]() -> std::string {
    if (!makeAllReadOnly()) return refusal();
    if (::mount("tmpfs", data_.path().c_str(), "tmpfs", 0, nullptr) != 0) return refusal();
    TrashConfig config = TrashConfig::current();
    config.homeTrash = data_.at("Trash");
    if (UserTrashCan(config).count().value() != 0) return "refused: there is a Trash elsewhere";
    data_.plant("Trash/\n  files/\n    first\n    many/\n      part##### x50000\n  info/\n");
    Result<Process> process = Process::launch({.path = "/usr/bin/osascript",
                                               .args = {"-e", empty},
                                               .environment = {{"XDG_DATA_HOME", data_.path()}}});
    if (!process) return process.error().description();
    Process& tool = process.value();
    const Deadline end = Deadline::after(120);
    while (std::filesystem::exists(data_.at("Trash/files/first"))) {
      if (tool.waitUntil(Deadline::after(0.001))) return "it has ended early";
      if (end.hasPassed()) return "it has deleted nothing";
    }
    tool.terminate();
    tool.waitUntil(Deadline::never());
    if (!tool.exit()->isSuccess()) return "signal " + std::to_string(tool.exit()->signal);
    const bool isEmpty = std::filesystem::is_empty(data_.at("Trash/files"));
    return isEmpty && !std::filesystem::exists(data_.at("Trash/expunged")) ? ""
                                                                           : "something is left";
  });
  if (told.starts_with("refused")) GTEST_SKIP() << told;
  EXPECT_EQ(told, "");
}

TEST_F(ProgramTest, the_program_fails_if_an_item_stays_in_the_trash) {
  const std::string told = inPrivateMounts([&]() -> std::string {
    if (!makeAllReadOnly()) return refusal();
    const Answer answer = run("/usr/bin/osascript", {"-e", empty});
    if (answer.exit.status != 1) return "status " + std::to_string(answer.exit.status);
    if (!answer.output.empty()) return answer.output;
    return data_.length("Trash/files/b/c") == 0 ? "" : "it is gone";
  });
  if (told.starts_with("refused")) GTEST_SKIP() << told;
  EXPECT_EQ(told, "");
}

TEST_F(ProgramTest, the_option_help_prints_the_usage) {
  EXPECT_TRUE(run(program(), {"--help"}).exit.isSuccess());
  EXPECT_TRUE(run(program(), {"--help"}).output.starts_with("Usage: "));
  EXPECT_TRUE(run(program(), {"osascript", "--help"}).output.starts_with("Usage: "));
}

TEST_F(ProgramTest, unknown_names_of_tools_are_refused) {
  const Answer answer = run(program(), {"unknown"});
  EXPECT_EQ(answer.output, "");
  EXPECT_EQ(answer.exit.status, 2);
}

}  // namespace
}  // namespace tessaly::tools
