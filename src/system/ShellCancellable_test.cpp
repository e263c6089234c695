// Shell::cancellable with real tools; tests/support/TestToolMain.cpp describes their steps.
#include <atomic>
#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>
#include <thread>

#include "support/OwnProcess.h"
#include "support/TempTree.h"
#include "support/TestTool.h"
#include "system/Shell.h"

namespace tessaly {
namespace {

// Time limits in seconds: for tools that exit by themselves, and for those that do not.
constexpr double ample = 600;
constexpr double brief = 0.05;

bool never() {
  return false;
}

// The code of the error in the domain "Marrow", or 0 for none.
int codeOf(const std::vector<std::string>& steps, double timeout,
           const std::function<bool()>& isCancelled) {
  try {
    Shell::cancellable(isCancelled)(testTool(), steps, timeout);
  } catch (const ToolError& error) {
    EXPECT_EQ(error.domain(), "Marrow");
    return error.code();
  }
  return 0;
}

TEST(ShellCancellable, what_a_tool_prints_is_returned_as_by_run) {
  for (const Shell::Run& run : {Shell::cancellable(never), Shell::cancellable({})}) {
    EXPECT_EQ(run(testTool(), {"say", "words", "exit", "3"}, ample), "words");
    EXPECT_EQ(run("/bin/sh", {"-c", "printf '\\377'"}, ample), "");
    EXPECT_EQ(run(testTool(), {"variable", "LC_ALL"}, ample), "C");
  }
}

TEST(ShellCancellable, a_late_tool_times_out) {
  EXPECT_EQ(codeOf({"sleep"}, brief, never), 1);
  EXPECT_EQ(codeOf({"print", "1048576"}, brief, never), 1);
}

TEST(ShellCancellable, a_tool_that_does_not_start_is_an_error) {
  try {
    Shell::cancellable(never)("/nowhere/tool", {}, ample);
    ADD_FAILURE() << "it has started";
  } catch (const ToolError& error) {
    EXPECT_EQ(error.domain(), "POSIX");
    EXPECT_EQ(error.code(), ENOENT);
  }
}

TEST(ShellCancellable, no_tool_is_started_after_the_cancellation) {
  const TempTree folder;
  EXPECT_EQ(codeOf({"record-term", folder.at("started")}, ample, [] { return true; }), 2);
  EXPECT_EQ(codeOf({"exit", "0"}, ample, [] { return true; }), 2);
  EXPECT_FALSE(std::filesystem::exists(folder.at("started")));
}

// Cancels once the tool is running.
int codeWhenCancelled(std::vector<std::string> steps, const TempTree& folder) {
  const ToolMessages ready(folder.at("ready"));
  std::atomic<bool> isCancelled = false;
  std::thread other([&] {
    ready.wait();
    isCancelled = true;
  });
  steps.insert(steps.end(), {"tell", ready.path(), "sleep"});
  const int code = codeOf(steps, ample, [&] { return isCancelled.load(); });
  other.join();
  return code;
}

TEST(ShellCancellable, a_running_tool_is_terminated) {
  const TempTree folder;
  EXPECT_EQ(codeWhenCancelled({"record-term", folder.at("asked")}, folder), 2);
  EXPECT_TRUE(std::filesystem::exists(folder.at("asked")));
}

TEST(ShellCancellable, a_tool_that_ignores_the_request_is_killed) {
  const OwnProcess before = OwnProcess::now();
  const TempTree folder;
  EXPECT_EQ(codeWhenCancelled({"ignore-term"}, folder), 2);
  EXPECT_EQ(settled(before), before);
}

}  // namespace
}  // namespace tessaly
