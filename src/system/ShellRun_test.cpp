// Shell::run with real tools, most of them tests/support/TestToolMain.cpp.
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <thread>
#include <unistd.h>

#include "support/OwnProcess.h"
#include "support/TempTree.h"
#include "support/TestTool.h"
#include "system/Shell.h"

namespace tessaly {
namespace {

using testing::HasSubstr;

// Time limits in seconds: for tools that exit by themselves, and for those that do not.
constexpr double ample = 600;
constexpr double brief = 0.05;

std::string run(const std::vector<std::string>& steps, double timeout = ample) {
  return Shell::run(testTool(), steps, timeout);
}

void expectTimeOut(const std::vector<std::string>& steps, double timeout = brief) {
  try {
    run(steps, timeout);
    ADD_FAILURE() << "no time-out";
  } catch (const ToolError& error) {
    EXPECT_EQ(error.domain(), "Marrow");
    EXPECT_EQ(error.code(), 1);
    EXPECT_EQ(error.what(), "timed out: " + testTool());
  }
}

TEST(ShellRun, the_output_of_the_tool_is_returned) {
  EXPECT_EQ(run({"say", "two\nlines\n"}), "two\nlines\n");
}

TEST(ShellRun, the_exit_status_is_ignored) {
  EXPECT_EQ(run({"exit", "1"}), "");
  EXPECT_EQ(run({"say", "half", "exit", "1"}), "half");
}

TEST(ShellRun, the_output_of_a_tool_that_crashed_is_returned) {
  EXPECT_EQ(Shell::run("/bin/sh", {"-c", "echo half; kill -9 $$"}, ample), "half\n");
}

TEST(ShellRun, standard_error_is_not_returned) {
  EXPECT_EQ(run({"complain", "100", "say", "fine"}), "fine");
}

TEST(ShellRun, text_in_any_language_is_returned) {
  for (const char* text : {"é", "\u20ac", "\U0001F600", "\uFFFD", "\uFFFF", "\uFEFFa", "a\r\n\t"}) {
    EXPECT_EQ(run({"say", text}), text);
  }
}

TEST(ShellRun, output_that_is_not_utf8_is_returned_as_an_empty_text) {
  for (const char* bytes : {"\xff", "fine\nbut \xc3", "\xe2\x82", "\xf0\x9f\x98", "\xed\xa0\x80",
                            "\xc0\xaf", "\xf4\x90\x80\x80", "\x80"}) {
    EXPECT_EQ(run({"say", bytes}), "");
  }
}

TEST(ShellRun, output_that_fills_the_pipe_is_returned) {
  EXPECT_EQ(run({"print", "65536"}), std::string(65536, 'x'));
}

TEST(ShellRun, output_that_does_not_fit_the_pipe_times_out) {
  expectTimeOut({"print", "65537"});
  expectTimeOut({"print", "1048576"});
}

TEST(ShellRun, standard_error_that_does_not_fit_the_pipe_times_out) {
  expectTimeOut({"complain", "1048576"});
}

TEST(ShellRun, a_timeout_of_0_ends_the_call_at_once) {
  for (const double timeout : {0.0, -1.0, -std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()}) {
    expectTimeOut({"sleep"}, timeout);
  }
}

TEST(ShellRun, a_very_large_timeout_means_no_limit) {
  for (const double timeout : {1e300, 1e18, std::numeric_limits<double>::infinity()}) {
    EXPECT_EQ(run({"say", "fine"}, timeout), "fine");
  }
}

// Calls `attempt` with growing time-outs until the file `path` exists: on a busy machine a tool
// takes long to reach the step that creates it.
void untilMade(const std::string& path, const std::function<void(double timeout)>& attempt) {
  constexpr double longest = 60;
  for (double timeout = brief; timeout < longest && access(path.c_str(), F_OK) != 0; timeout *= 3) {
    attempt(timeout);
  }
  EXPECT_EQ(access(path.c_str(), F_OK), 0);
}

TEST(ShellRun, a_late_tool_is_asked_to_terminate) {
  const TempTree folder;
  untilMade(folder.at("asked"), [&](double timeout) {
    expectTimeOut({"record-term", folder.at("asked"), "sleep"}, timeout);
  });
}

TEST(ShellRun, a_late_tool_leaves_no_process) {
  const OwnProcess before = OwnProcess::now();
  expectTimeOut({"sleep"});
  EXPECT_EQ(settled(before), before);
}

TEST(ShellRun, the_tool_starts_in_the_given_folder) {
  const TempTree folder("in\\shere/");
  EXPECT_EQ(Shell::run(testTool(), {"cwd"}, ample, folder.at("in here")), folder.at("in here"));
}

TEST(ShellRun, the_tool_starts_in_the_current_folder_if_none_is_given) {
  EXPECT_EQ(run({"cwd"}), std::filesystem::current_path().string());
}

TEST(ShellRun, tools_run_in_the_c_locale) {
  setenv("LC_ALL", "de_DE.UTF-8", 1);
  EXPECT_EQ(run({"variable", "LC_ALL"}), "C");
  EXPECT_STREQ(getenv("LC_ALL"), "de_DE.UTF-8");
  unsetenv("LC_ALL");
  EXPECT_EQ(run({"variable", "LC_ALL"}), "C");
}

TEST(ShellRun, zip_does_not_get_the_options_of_the_user) {
  for (const char* name : {"ZIPOPT", "ZIP"}) {
    setenv(name, "-m", 1);
    EXPECT_EQ(run({"variable", name}), "");
    unsetenv(name);
  }
}

TEST(ShellRun, the_reason_why_a_tool_does_not_start_is_thrown) {
  const TempTree folder("note mode=0644\n");
  const auto expectLaunchError = [](const std::string& path, const std::optional<std::string>& cwd,
                                    int code) {
    try {
      Shell::run(path, {}, ample, cwd);
      ADD_FAILURE() << path << " has started";
    } catch (const ToolError& error) {
      EXPECT_EQ(error.domain(), "POSIX");
      EXPECT_EQ(error.code(), code);
      EXPECT_THAT(error.what(), HasSubstr(path));
    }
  };
  expectLaunchError(folder.at("missing"), std::nullopt, ENOENT);
  expectLaunchError(folder.at("note"), std::nullopt, EACCES);
  expectLaunchError(folder.path(), std::nullopt, EACCES);
  expectLaunchError(testTool(), folder.at("missing"), ENOENT);
  expectLaunchError("/usr/bin/osascript", folder.at("missing"), ENOENT);
}

TEST(ShellRun, the_output_is_read_until_all_processes_that_hold_it_have_closed_it) {
  const TempTree folder;
  const ToolMessages left(folder.at("left"));
  Hold hold(folder.at("hold"));
  std::thread releasing([&] {
    left.wait();
    // The output is read only after the tool itself has been reaped.
    OwnProcess alone = OwnProcess::now();
    alone.hasChildren = false;
    settled(alone);
    hold.release();
  });
  EXPECT_EQ(run({"say", "a", "hand-over", "tell", left.path(), "hold", hold.path(), "say", "b"}),
            "ab");
  releasing.join();
}

TEST(ShellRun, the_own_tool_starts_in_place_of_one_of_another_system) {
  const TempTree data("Trash/\n  files/\n    a\n    b\n");
  const char* const before = std::getenv("XDG_DATA_HOME");
  const std::string kept = before != nullptr ? before : "";
  const auto count = [&] {
    return std::stoll(Shell::run("/usr/bin/osascript",
                                 {"-e", "tell application \"Finder\" to count items of trash"},
                                 ample));
  };
  setenv("XDG_DATA_HOME", data.at("none").c_str(), 1);
  const long long elsewhere = count();
  setenv("XDG_DATA_HOME", data.path().c_str(), 1);
  EXPECT_EQ(count(), elsewhere + 2);
  EXPECT_EQ(Shell::run("/usr/bin/osascript", {"-e", "beep"}, ample), "");
  if (before != nullptr) {
    setenv("XDG_DATA_HOME", kept.c_str(), 1);
  } else {
    unsetenv("XDG_DATA_HOME");
  }
}

TEST(ShellRun, names_are_passed_through_real_tools_as_bytes) {
  const TempTree folder("caf\\xc3\\xa9\\n 4K\nodd\\xff\\xfe 4K\n");
  Shell::run("/usr/bin/zip", {"-q", "-r", "out.zip", "."}, ample, folder.path());
  ASSERT_EQ(std::filesystem::remove(folder.at("caf\xc3\xa9\n")), true);
  ASSERT_EQ(std::filesystem::remove(folder.at("odd\xff\xfe")), true);
  const std::string archive = folder.at("out.zip");
  std::string bytes(static_cast<std::size_t>(folder.length("out.zip")), '\0');
  FILE* const file = std::fopen(archive.c_str(), "rb");
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(std::fread(bytes.data(), 1, bytes.size(), file), bytes.size());
  std::fclose(file);
  EXPECT_THAT(bytes, HasSubstr("caf\xc3\xa9\n"));
  EXPECT_THAT(bytes, HasSubstr("odd\xff\xfe"));
}

TEST(ShellDuOfRealFolders, du_returns_the_bytes_on_disk) {
  const TempTree tree("with\\sblank/\n  film 300K\n  sparse sparse=1G\n  deep/\n    b 8K\n");
  std::int64_t folders = 0;
  for (const char* const folder : {"with blank", "with blank/deep"})
    folders += tree.allocated(folder);
  EXPECT_EQ(Shell::duBytes(tree.at("with blank")), 308 * 1024 + folders);
  EXPECT_EQ(Shell::duBytes(tree.at("with blank/film")), 300 * 1024);
}

TEST(ShellDuOfRealFolders, du_of_a_missing_folder_is_0) {
  const TempTree tree;
  EXPECT_EQ(Shell::duBytes(tree.at("missing")), 0);
  EXPECT_EQ(Shell::duBytes(""), 0);
}

}  // namespace
}  // namespace tessaly
