// A thousand calls of Shell::run from several threads, successes and failures mixed, leave no
// child, descriptor or thread behind.
#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include "support/OwnProcess.h"
#include "support/TempTree.h"
#include "support/TestTool.h"
#include "system/Shell.h"

namespace tessaly {
namespace {

constexpr int runs = 1000;
constexpr int threads = 8;
constexpr double ample = 600;
constexpr double brief = 0.02;

struct Told {
  std::atomic<int> fine{0};
  std::atomic<int> late{0};
  std::atomic<int> refused{0};
};

void runOne(int number, const std::string& hold, const TempTree& folder, Told& told) {
  try {
    const std::string text = "number " + std::to_string(number);
    if (number % 25 == 0) {
      Shell::run(testTool(), {"sleep"}, brief);
    } else if (number % 50 == 1) {
      // Enough time for the tool to start ignoring SIGTERM.
      Shell::run(testTool(), {"ignore-term", "hold", hold}, 0.2);
    } else if (number % 50 == 2) {
      Shell::run(testTool(), {"print", "1048576"}, brief);
    } else if (number % 10 == 3) {
      Shell::run(folder.at("missing"), {}, ample);
    } else if (Shell::run(testTool(), {"say", text, "descriptors"}, ample) == text + "0 1 2") {
      ++told.fine;
    }
  } catch (const ToolError& error) {
    ++(error.domain() == "Marrow" ? told.late : told.refused);
  }
}

TEST(ShellManyRuns, a_thousand_runs_leave_no_child_descriptor_or_thread_behind) {
  const TempTree folder;
  Told told;
  const OwnProcess before = OwnProcess::now();
  {
    const Hold hold(folder.at("hold"));
    std::atomic<int> next{0};
    std::vector<std::thread> callers;
    for (int i = 0; i < threads; ++i) {
      callers.emplace_back([&] {
        for (int number = 0; (number = next++) < runs;) runOne(number, hold.path(), folder, told);
      });
    }
    for (std::thread& caller : callers) caller.join();
  }
  EXPECT_EQ(told.late, 40 + 20 + 20);
  EXPECT_EQ(told.refused, 100);
  EXPECT_EQ(told.fine, runs - 80 - 100);
  EXPECT_EQ(settled(before), before);
}

}  // namespace
}  // namespace tessaly
