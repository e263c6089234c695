// How long Shell waits for a tool. The test supplies all deadlines, so a tool is late, or in time,
// however fast the machine is.
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <sys/wait.h>
#include <vector>

#include "support/OwnProcess.h"
#include "support/TempTree.h"
#include "support/TestTool.h"
#include "system/Shell.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

Deadline atOnce() {
  return Deadline::after(0);
}

// Waits until a child of this process has exited, without reaping it.
void waitForAnEnd() {
  siginfo_t ended{};
  waitid(P_ALL, 0, &ended, WEXITED | WNOWAIT);
}

class ShellWaits : public testing::Test {
 protected:
  // Takes each deadline from `moment`, which gets the number of deadlines requested before.
  Shell::After after(std::function<Deadline(std::size_t before)> moment) {
    return [this, moment = std::move(moment)](double seconds) {
      asked_.push_back(seconds);
      return moment(asked_.size() - 1);
    };
  }

  void expectTimeOut(const std::function<void()>& run) {
    try {
      run();
      ADD_FAILURE() << "no time-out";
    } catch (const ToolError& error) {
      EXPECT_EQ(error.domain(), "Marrow");
      EXPECT_EQ(error.code(), 1);
    }
  }

  std::vector<double> asked_;  // in seconds
  TempTree folder_;
};

TEST_F(ShellWaits, run_waits_the_timeout_and_one_more_second_for_the_exit) {
  const OwnProcess before = OwnProcess::now();
  expectTimeOut([&] {
    Shell::run(testTool(), {"sleep"}, 7, std::nullopt, after([](std::size_t moments) {
                 return moments == 0 ? atOnce() : Deadline::never();
               }));
  });
  EXPECT_THAT(asked_, ElementsAre(7, 1));
  EXPECT_EQ(settled(before), before);
}

TEST_F(ShellWaits, run_does_not_wait_longer_for_a_tool_that_does_not_terminate) {
  const ToolMessages ignoring(folder_.at("ignoring"));
  const OwnProcess before = OwnProcess::now();
  {
    const Hold hold(folder_.at("hold"));
    expectTimeOut([&] {
      Shell::run(testTool(), {"ignore-term", "tell", ignoring.path(), "hold", hold.path()}, 7,
                 std::nullopt, after([&](std::size_t moments) {
                   if (moments == 0) ignoring.wait();
                   return atOnce();
                 }));
    });
    EXPECT_TRUE(OwnProcess::now().hasChildren);
  }
  EXPECT_THAT(asked_, ElementsAre(7, 1));
  EXPECT_EQ(settled(before), before);
}

TEST_F(ShellWaits, the_output_is_read_until_the_deadline_of_the_tool) {
  const Hold hold(folder_.at("hold"));
  const std::string output = Shell::run(testTool(), {"say", "a", "hand-over", "hold", hold.path()},
                                        7, std::nullopt, after([](std::size_t) {
                                          waitForAnEnd();
                                          return atOnce();
                                        }));
  EXPECT_EQ(output, "a");
  EXPECT_THAT(asked_, ElementsAre(7));
}

TEST_F(ShellWaits, runToEnd_waits_the_timeout_and_one_more_second_for_the_exit) {
  expectTimeOut([&] {
    Shell::runToEnd(testTool(), {"sleep"}, 7, std::nullopt, {}, after([](std::size_t moments) {
                      return moments < 2 ? atOnce() : Deadline::never();
                    }));
  });
  EXPECT_THAT(asked_, ElementsAre(7, 0.025, 1));
}

// A tool that must be killed: the last deadline is for the wait after the kill.
class ToolsToKill : public ShellWaits {
 protected:
  std::vector<std::string> steps() const {
    return {"ignore-term", "tell", ignoring_.path(), "sleep"};
  }
  Shell::After moments() {
    return after([this](std::size_t before) {
      if (before == 0) ignoring_.wait();
      return before < 3 ? atOnce() : Deadline::never();
    });
  }

  ToolMessages ignoring_ = ToolMessages(folder_.at("ignoring"));
  const OwnProcess before_ = OwnProcess::now();
};

TEST_F(ToolsToKill, a_late_tool_is_killed_after_a_second_and_waited_for_a_second) {
  expectTimeOut([&] { Shell::runToEnd(testTool(), steps(), 7, std::nullopt, {}, moments()); });
  EXPECT_THAT(asked_, ElementsAre(7, 0.025, 1, 1));
  EXPECT_EQ(OwnProcess::now(), before_);
}

TEST_F(ToolsToKill, a_cancelled_tool_is_killed_after_a_tenth_of_a_second) {
  try {
    Shell::runToEnd(
        testTool(), steps(), 7, std::nullopt, [] { return true; }, moments());
    ADD_FAILURE() << "it was not given up";
  } catch (const ToolError& error) {
    EXPECT_EQ(error.code(), 2);
  }
  EXPECT_THAT(asked_, ElementsAre(7, 0.025, 0.1, 0.1));
  EXPECT_EQ(OwnProcess::now(), before_);
}

}  // namespace
}  // namespace tessaly
