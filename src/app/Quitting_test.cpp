#include "app/Quitting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tessaly {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

// A program whose clock advances by five milliseconds with each pause.
class QuittingTest : public testing::Test {
 protected:
  Quitting::Steps steps() {
    const auto note = [this](const char* step) {
      return [this, step] { done_.emplace_back(step); };
    };
    return {.hideWindows = note("windows"),
            .leaveDesktop = note("desktop"),
            .endWriting = note("writing"),
            .giveUpInstance = note("instance"),
            .giveUpWork = note("work"),
            .isBusy = [this] { return now_ < busyUntil_; },
            .isMoving = [this] { return now_ < movingUntil_; },
            .pause =
                [this] {
                  now_ += 5ms;
                  if (inPause_) inPause_();
                },
            .exit =
                [this](int status) {
                  done_.emplace_back("exit " + std::to_string(status));
                  ended_ = now_;
                },
            .now = [this] { return now_; }};
  }

  std::chrono::nanoseconds taken() const { return ended_ - begin_; }

  std::vector<std::string> done_;
  const Quitting::Time begin_{1000h};
  Quitting::Time now_ = begin_;
  Quitting::Time ended_;
  Quitting::Time busyUntil_;
  Quitting::Time movingUntil_;
  std::function<void()> inPause_;
};

TEST_F(QuittingTest, quitting_lets_the_next_instance_start_before_it_waits) {
  busyUntil_ = begin_ + 1h;
  std::vector<std::string> beforeTheWait;
  inPause_ = [&] {
    if (beforeTheWait.empty()) beforeTheWait = done_;
  };
  Quitting(steps()).run(0);
  EXPECT_THAT(beforeTheWait, ElementsAre("windows", "desktop", "writing", "instance", "work"));
  EXPECT_THAT(done_, ElementsAre("windows", "desktop", "writing", "instance", "work", "exit 0"));
}

TEST_F(QuittingTest, quitting_ends_at_once_if_nothing_runs) {
  Quitting(steps()).run(3);
  EXPECT_EQ(done_.back(), "exit 3");
  EXPECT_EQ(taken(), 0ms);
}

TEST_F(QuittingTest, quitting_waits_for_work_that_ends_in_time) {
  busyUntil_ = begin_ + 70ms;
  Quitting(steps()).run(0);
  EXPECT_EQ(taken(), 70ms);
}

TEST_F(QuittingTest, quitting_does_not_wait_for_work_that_takes_too_long) {
  busyUntil_ = begin_ + 1h;
  Quitting(steps()).run(0);
  EXPECT_EQ(taken(), 200ms);
}

TEST_F(QuittingTest, quitting_waits_longer_for_a_move_and_for_no_other_work_meanwhile) {
  busyUntil_ = begin_ + 1h;
  movingUntil_ = begin_ + 3s;
  Quitting(steps()).run(0);
  EXPECT_EQ(taken(), 3s);
}

TEST_F(QuittingTest, quitting_does_not_wait_for_a_move_that_never_ends) {
  busyUntil_ = movingUntil_ = begin_ + 1h;
  Quitting(steps()).run(0);
  EXPECT_EQ(taken(), Quitting::patienceForMoves);
}

TEST_F(QuittingTest, quitting_happens_once) {
  busyUntil_ = begin_ + 50ms;
  Quitting quitting(steps());
  inPause_ = [&] { quitting.run(1); };
  quitting.run(0);
  EXPECT_THAT(done_, ElementsAre("windows", "desktop", "writing", "instance", "work", "exit 0"));
}

// The code that notices the loss, within one of the steps, calls exit(), and that step never
// returns.
class QuittingOnADisplayThatGoes : public QuittingTest {
 protected:
  struct Ended {};

  Quitting::Steps stepsToAnEnd() {
    Quitting::Steps all = steps();
    all.exit = [exit = all.exit](int status) {
      exit(status);
      throw Ended();
    };
    return all;
  }
};

TEST_F(QuittingOnADisplayThatGoes,
       quitting_continues_with_the_remaining_steps_when_the_display_is_lost) {
  Quitting* begun = nullptr;
  Quitting::Steps all = stepsToAnEnd();
  all.leaveDesktop = [&begun, leave = all.leaveDesktop] {
    leave();
    begun->runWithoutDisplay(1);
  };
  Quitting quitting(all);
  begun = &quitting;
  EXPECT_THROW(quitting.run(0), Ended);
  EXPECT_THAT(done_, ElementsAre("windows", "desktop", "writing", "instance", "work", "exit 1"));
}

TEST_F(QuittingOnADisplayThatGoes, quitting_keeps_its_time_limit_when_the_display_is_lost) {
  busyUntil_ = movingUntil_ = begin_ + 1s;
  Quitting quitting(stepsToAnEnd());
  inPause_ = [&] {
    if (now_ == begin_ + 100ms) quitting.runWithoutDisplay(1);
  };
  EXPECT_THROW(quitting.run(0), Ended);
  EXPECT_THAT(done_, ElementsAre("windows", "desktop", "writing", "instance", "work", "exit 1"));
  EXPECT_EQ(taken(), 1s);
}

TEST_F(QuittingTest, quitting_does_not_touch_what_was_on_a_lost_display) {
  Quitting(steps()).runWithoutDisplay(1);
  EXPECT_THAT(done_, ElementsAre("writing", "instance", "work", "exit 1"));
}

}  // namespace
}  // namespace tessaly
