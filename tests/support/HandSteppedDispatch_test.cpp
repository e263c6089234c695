#include "support/HandSteppedDispatch.h"

#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <string>

#include "support/DispatchContract.h"

namespace tessaly {
namespace {

using Queue = Dispatch::Queue;
using std::chrono::milliseconds;

struct HandSteppedHarness {
  Dispatch& dispatch() { return dispatch_; }
  std::chrono::nanoseconds now() { return dispatch_.now(); }
  void runMainUntil(const std::function<bool()>& done) {
    while (!done()) {
      if (dispatch_.step(Queue::main) || dispatch_.step(Queue::userInitiated) ||
          dispatch_.step(Queue::utility)) {
        continue;
      }
      ASSERT_TRUE(dispatch_.advanceToNextDue()) << "nothing is left that could end the wait";
    }
  }

  HandSteppedDispatch dispatch_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(HandStepped, DispatchContract, HandSteppedHarness);

TEST(HandSteppedDispatch, nothing_runs_by_itself) {
  HandSteppedDispatch dispatch;
  int ran = 0;
  for (const Queue queue : allQueues) dispatch.async(queue, [&] { ++ran; });
  EXPECT_EQ(ran, 0);
  for (const Queue queue : allQueues) EXPECT_EQ(dispatch.waiting(queue), 1u);
}

TEST(HandSteppedDispatch, the_oldest_work_can_be_taken_without_running_it) {
  HandSteppedDispatch dispatch;
  std::string ran;
  dispatch.async(Queue::utility, [&] { ran += 'a'; });
  dispatch.async(Queue::utility, [&] { ran += 'b'; });
  const Dispatch::Work work = dispatch.take(Queue::utility);
  dispatch.drainAll();
  EXPECT_EQ(ran, "b");
  work();
  EXPECT_EQ(ran, "ba");
  EXPECT_EQ(dispatch.take(Queue::utility), nullptr);
}

TEST(HandSteppedDispatch, a_step_runs_one_piece_of_the_given_queue) {
  HandSteppedDispatch dispatch;
  std::string ran;
  dispatch.async(Queue::main, [&] { ran += 'm'; });
  dispatch.async(Queue::userInitiated, [&] { ran += 'u'; });
  dispatch.async(Queue::userInitiated, [&] { ran += 'U'; });
  EXPECT_TRUE(dispatch.step(Queue::userInitiated));
  EXPECT_EQ(ran, "u");
  EXPECT_EQ(dispatch.waiting(Queue::userInitiated), 1u);
  EXPECT_EQ(dispatch.waiting(Queue::main), 1u);
  EXPECT_FALSE(dispatch.step(Queue::utility));
}

TEST(HandSteppedDispatch, draining_runs_work_that_is_added_meanwhile) {
  HandSteppedDispatch dispatch;
  bool isDone = false;
  dispatch.async(Queue::main, [&] {
    dispatch.async(Queue::utility, [&] { dispatch.async(Queue::main, [&] { isDone = true; }); });
  });
  dispatch.drainAll();
  EXPECT_TRUE(isDone);
}

TEST(HandSteppedDispatch, delayed_work_waits_until_time_has_advanced) {
  HandSteppedDispatch dispatch;
  dispatch.after(milliseconds(10), Queue::main, [] {});
  dispatch.advance(milliseconds(10) - std::chrono::nanoseconds(1));
  EXPECT_EQ(dispatch.waiting(Queue::main), 0u);
  dispatch.advance(std::chrono::nanoseconds(1));
  EXPECT_EQ(dispatch.waiting(Queue::main), 1u);
}

TEST(HandSteppedDispatch, work_without_delay_is_queued_at_once) {
  HandSteppedDispatch dispatch;
  dispatch.after(milliseconds(0), Queue::utility, [] {});
  EXPECT_EQ(dispatch.waiting(Queue::utility), 1u);
}

TEST(HandSteppedDispatch, due_work_is_queued_in_the_order_of_its_times) {
  HandSteppedDispatch dispatch;
  std::string ran;
  dispatch.after(milliseconds(30), Queue::main, [&] { ran += 'c'; });
  dispatch.after(milliseconds(10), Queue::main, [&] { ran += 'a'; });
  dispatch.after(milliseconds(20), Queue::main, [&] { ran += 'b'; });
  dispatch.advance(milliseconds(100));
  dispatch.drain(Queue::main);
  EXPECT_EQ(ran, "abc");
  EXPECT_EQ(dispatch.now(), milliseconds(100));
}

}  // namespace
}  // namespace tessaly
