#include "system/VolumeCalls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "support/HandSteppedDispatch.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Queue = Dispatch::Queue;
using std::chrono::seconds;

class VolumeCallsTest : public testing::Test {
 protected:
  // Asks `volume`, which responds with `answer`; the result is recorded.
  void ask(const VolumeCalls::Volume& volume, int answer, seconds patience = seconds(6)) {
    calls_->ask<int>(
        volume, patience,
        [this, answer] {
          asked_.push_back(answer);
          return answer;
        },
        [this, answer](std::optional<int> given) {
          home_.push_back(std::to_string(answer) + (given == answer ? " answered" : " given up"));
        });
  }

  // Lets the next question hang until its time limit has passed; returns the work that asks it.
  Dispatch::Work giveUpTheNext() {
    Dispatch::Work hanging = dispatch_.take(Queue::utility);
    dispatch_.advance(seconds(6));
    dispatch_.drainAll();
    return hanging;
  }

  HandSteppedDispatch dispatch_;
  std::unique_ptr<VolumeCalls> calls_ = std::make_unique<VolumeCalls>(dispatch_);
  std::vector<int> asked_;
  std::vector<std::string> home_;
  const VolumeCalls::Volume a_{1, "/a"};
  const VolumeCalls::Volume b_{2, "/b"};
};

TEST_F(VolumeCallsTest, an_answer_is_delivered_on_the_main_queue) {
  ask(a_, 1);
  EXPECT_THAT(asked_, IsEmpty());
  dispatch_.step(Queue::utility);
  EXPECT_THAT(asked_, ElementsAre(1));
  EXPECT_THAT(home_, IsEmpty());
  dispatch_.step(Queue::main);
  EXPECT_THAT(home_, ElementsAre("1 answered"));
  dispatch_.advance(seconds(60));
  dispatch_.drainAll();
  EXPECT_THAT(home_, ElementsAre("1 answered"));
}

TEST_F(VolumeCallsTest, a_volume_that_hangs_does_not_delay_others) {
  ask(a_, 1);
  ask(b_, 2);
  const auto hanging = dispatch_.take(Queue::utility);
  dispatch_.drainAll();
  EXPECT_THAT(home_, ElementsAre("2 answered"));
  dispatch_.advance(seconds(6));
  dispatch_.drainAll();
  EXPECT_THAT(home_, ElementsAre("2 answered", "1 given up"));
}

TEST_F(VolumeCallsTest, a_volume_gets_one_question_at_a_time) {
  ask(a_, 1);
  ask(a_, 2);
  EXPECT_EQ(dispatch_.waiting(Queue::utility), 1U);
  dispatch_.drainAll();
  EXPECT_THAT(home_, ElementsAre("1 answered", "2 answered"));
}

TEST_F(VolumeCallsTest, questions_waiting_for_a_hanging_volume_are_given_up_with_it) {
  ask(a_, 1);
  ask(a_, 2);
  const auto hanging = giveUpTheNext();
  EXPECT_THAT(home_, ElementsAre("1 given up", "2 given up"));
  EXPECT_THAT(asked_, IsEmpty());
}

TEST_F(VolumeCallsTest, a_volume_that_hangs_is_not_asked_again) {
  ask(a_, 1);
  const auto hanging = giveUpTheNext();
  ask(a_, 2);
  EXPECT_EQ(dispatch_.waiting(Queue::utility), 0U);
  EXPECT_THAT(home_, ElementsAre("1 given up"));
  dispatch_.drainAll();
  EXPECT_THAT(home_, ElementsAre("1 given up", "2 given up"));
}

TEST_F(VolumeCallsTest, a_volume_that_responds_late_is_asked_again) {
  ask(a_, 1);
  const auto hanging = giveUpTheNext();
  hanging();
  dispatch_.drainAll();
  EXPECT_THAT(home_, ElementsAre("1 given up"));
  ask(a_, 2);
  dispatch_.drainAll();
  EXPECT_THAT(home_, ElementsAre("1 given up", "2 answered"));
}

TEST_F(VolumeCallsTest, a_volume_mounted_over_a_hanging_one_is_asked) {
  ask(a_, 1);
  const auto hanging = giveUpTheNext();
  ask({3, "/a"}, 2);
  dispatch_.drainAll();
  EXPECT_THAT(home_, ElementsAre("1 given up", "2 answered"));
}

TEST_F(VolumeCallsTest, the_same_number_at_another_mount_point_is_another_volume) {
  ask({0, "/a"}, 1);
  const auto hanging = giveUpTheNext();
  ask({0, "/b"}, 2);
  dispatch_.drainAll();
  EXPECT_THAT(home_, ElementsAre("1 given up", "2 answered"));
}

TEST_F(VolumeCallsTest, each_question_has_its_own_time_limit) {
  ask(a_, 1, seconds(5));
  ask(b_, 2, seconds(9));
  const auto one = dispatch_.take(Queue::utility);
  const auto other = dispatch_.take(Queue::utility);
  dispatch_.advance(seconds(5));
  dispatch_.drainAll();
  EXPECT_THAT(home_, ElementsAre("1 given up"));
  other();
  dispatch_.drainAll();
  EXPECT_THAT(home_, ElementsAre("1 given up", "2 answered"));
}

TEST_F(VolumeCallsTest, the_time_limit_of_a_question_does_not_apply_to_the_next) {
  ask(a_, 1);
  dispatch_.advance(seconds(5));
  ask(a_, 2);
  dispatch_.step(Queue::utility);
  dispatch_.step(Queue::main);
  const auto hanging = dispatch_.take(Queue::utility);
  dispatch_.advance(seconds(5));
  dispatch_.drainAll();
  EXPECT_THAT(home_, ElementsAre("1 answered"));
  dispatch_.advance(seconds(1));
  dispatch_.drainAll();
  EXPECT_THAT(home_, ElementsAre("1 answered", "2 given up"));
}

TEST_F(VolumeCallsTest,
       a_limited_number_of_volumes_is_asked_at_a_time_without_counting_hanging_ones) {
  std::vector<Dispatch::Work> hanging;
  for (int i = 1; i <= 9; ++i) ask({static_cast<std::uint64_t>(i), "/v"}, i);
  for (const int left : {5, 1}) {
    EXPECT_EQ(dispatch_.waiting(Queue::utility), VolumeCalls::mostAtOnce) << left;
    while (Dispatch::Work work = dispatch_.take(Queue::utility)) hanging.push_back(work);
    dispatch_.advance(seconds(6));
    dispatch_.drain(Queue::main);
  }
  EXPECT_EQ(home_.size(), 8U);
  dispatch_.drainAll();
  EXPECT_EQ(home_.back(), "9 answered");
  for (const Dispatch::Work& work : hanging) work();
  dispatch_.drainAll();
  EXPECT_EQ(home_.size(), 9U);
}

TEST_F(VolumeCallsTest, no_answer_comes_after_destruction) {
  ask(a_, 1);
  ask(a_, 2);
  ask(b_, 3);
  dispatch_.step(Queue::utility);
  const auto hanging = dispatch_.take(Queue::utility);
  calls_.reset();
  hanging();
  dispatch_.advance(seconds(60));
  dispatch_.drainAll();
  EXPECT_THAT(home_, IsEmpty());
  EXPECT_THAT(asked_, ElementsAre(1, 3));
}

TEST_F(VolumeCallsTest, no_time_out_is_reported_after_destruction) {
  ask(a_, 1);
  const auto hanging = giveUpTheNext();
  ask(a_, 2);
  calls_.reset();
  dispatch_.drainAll();
  EXPECT_THAT(home_, ElementsAre("1 given up"));
}

}  // namespace
}  // namespace tessaly
