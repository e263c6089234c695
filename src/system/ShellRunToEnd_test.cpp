// Shell::runToEnd with real tools; tests/support/TestToolMain.cpp describes their steps.
#include <atomic>
#include <cerrno>
#include <csignal>
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

Shell::Ending runToEnd(const std::vector<std::string>& steps) {
  return Shell::runToEnd(testTool(), steps, ample, std::nullopt);
}

// The code of the error in the domain "Marrow", or 0 for none.
int codeOf(const std::vector<std::string>& steps, double timeout,
           const std::function<bool()>& isCancelled = {}) {
  try {
    Shell::runToEnd(testTool(), steps, timeout, std::nullopt, isCancelled);
  } catch (const ToolError& error) {
    EXPECT_EQ(error.domain(), "Marrow");
    return error.code();
  }
  return 0;
}

TEST(ShellRunToEnd, the_exit_status_or_the_signal_of_the_tool_is_returned) {
  EXPECT_EQ(runToEnd({"exit", "18"}).exit, (Process::Exit{.status = 18, .signal = 0}));
  EXPECT_TRUE(runToEnd({}).exit.isSuccess());
  const auto killed = Shell::runToEnd("/bin/sh", {"-c", "kill -9 $$"}, ample, std::nullopt).exit;
  EXPECT_EQ(killed.signal, SIGKILL);
}

TEST(ShellRunToEnd, a_mebibyte_of_error_output_does_not_block_the_tool) {
  const Shell::Ending ending =
      runToEnd({"say", "first", "complain", "1048576", "print", "1048576", "exit", "3"});
  EXPECT_EQ(ending.exit.status, 3);
  EXPECT_TRUE(ending.words.starts_with("firstxxx"));
  EXPECT_EQ(ending.words.size(), 4096U);
}

TEST(ShellRunToEnd, the_tool_starts_in_the_given_folder_and_the_c_locale) {
  const TempTree folder;
  EXPECT_EQ(Shell::runToEnd(testTool(), {"cwd"}, ample, folder.path()).words, folder.path());
  EXPECT_EQ(runToEnd({"variable", "LC_ALL"}).words, "C");
  EXPECT_EQ(runToEnd({"variable", "ZIPOPT"}).words, "");
}

TEST(ShellRunToEnd, a_late_tool_times_out) {
  EXPECT_EQ(codeOf({"sleep"}, brief), 1);
  EXPECT_EQ(codeOf({"flood"}, brief), 1);
}

TEST(ShellRunToEnd, a_cancelled_tool_is_terminated) {
  const TempTree folder;
  const ToolMessages ready(folder.at("ready"));
  std::atomic<bool> isCancelled = false;
  std::thread other([&] {
    ready.wait();
    isCancelled = true;
  });
  EXPECT_EQ(codeOf({"record-term", folder.at("asked"), "tell", ready.path(), "sleep"}, ample,
                   [&] { return isCancelled.load(); }),
            2);
  other.join();
  EXPECT_TRUE(std::filesystem::exists(folder.at("asked")));
}

TEST(ShellRunToEnd, a_cancelled_tool_that_does_not_terminate_is_killed) {
  const OwnProcess before = OwnProcess::now();
  const TempTree folder;
  const ToolMessages ready(folder.at("ready"));
  std::atomic<bool> isCancelled = false;
  std::thread other([&] {
    ready.wait();
    isCancelled = true;
  });
  EXPECT_EQ(codeOf({"ignore-term", "tell", ready.path(), "sleep"}, ample,
                   [&] { return isCancelled.load(); }),
            2);
  other.join();
  EXPECT_EQ(settled(before), before);
}

TEST(ShellRunToEnd, the_reason_why_a_tool_does_not_start_is_thrown) {
  try {
    Shell::runToEnd("/nowhere/tool", {}, ample, std::nullopt);
    ADD_FAILURE() << "it has started";
  } catch (const ToolError& error) {
    EXPECT_EQ(error.domain(), "POSIX");
    EXPECT_EQ(error.code(), ENOENT);
  }
}

}  // namespace
}  // namespace tessaly
