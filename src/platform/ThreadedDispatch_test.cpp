#include "platform/ThreadedDispatch.h"

#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <latch>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

#include "support/DispatchContract.h"
#include "support/Eventually.h"
#include "support/MainLoop.h"

namespace tessaly {
namespace {

using Queue = Dispatch::Queue;

struct ThreadedHarness {
  Dispatch& dispatch() { return dispatch_; }
  std::chrono::nanoseconds now() { return std::chrono::steady_clock::now().time_since_epoch(); }
  void runMainUntil(const std::function<bool()>& done) { mainLoop_.runUntil(done); }

  MainLoop mainLoop_;
  ThreadedDispatch dispatch_{[this](Dispatch::Work work) { mainLoop_.post(std::move(work)); }};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Threaded, DispatchContract, ThreadedHarness);

TEST(ThreadedDispatch, runs_worker_work_off_the_main_thread) {
  ThreadedHarness harness;
  for (const Queue queue : {Queue::userInitiated, Queue::utility}) {
    std::thread::id ranOn;
    bool isDone = false;
    harness.dispatch().async(queue, [&] {
      ranOn = std::this_thread::get_id();
      harness.dispatch().async(Queue::main, [&] { isDone = true; });
    });
    harness.runMainUntil([&] { return isDone; });
    EXPECT_NE(ranOn, std::this_thread::get_id());
  }
}

TEST(ThreadedDispatch, holds_up_no_work_behind_work_that_blocks) {
  ThreadedHarness harness;
  // The first piece of each queue ends only when a later one of either has run.
  std::latch laterHaveRun(2);
  int ended = 0;
  for (const Queue queue : {Queue::userInitiated, Queue::utility}) {
    harness.dispatch().async(queue, [&] {
      laterHaveRun.wait();
      harness.dispatch().async(Queue::main, [&] { ++ended; });
    });
  }
  for (const Queue queue : {Queue::userInitiated, Queue::utility}) {
    harness.dispatch().async(queue, [&] { laterHaveRun.count_down(); });
  }
  harness.runMainUntil([&] { return ended == 2; });
  EXPECT_EQ(ended, 2);
}

TEST(ThreadedDispatch, does_not_let_a_far_time_hold_up_a_near_one) {
  ThreadedHarness harness;
  bool isNearDone = false;
  bool isFarDone = false;
  harness.dispatch().after(std::chrono::hours(1), Queue::main, [&] { isFarDone = true; });
  harness.dispatch().after(std::chrono::milliseconds(1), Queue::main, [&] { isNearDone = true; });
  harness.runMainUntil([&] { return isNearDone; });
  EXPECT_FALSE(isFarDone);
}

TEST(ThreadedDispatch, drops_what_still_waits_for_its_time_at_its_end) {
  auto token = std::make_shared<int>();
  const std::weak_ptr<int> watched = token;
  MainLoop mainLoop;
  {
    ThreadedDispatch dispatch([&](Dispatch::Work work) { mainLoop.post(std::move(work)); });
    dispatch.after(std::chrono::hours(1), Queue::main, [token = std::move(token)] {});
    EXPECT_FALSE(watched.expired());
  }
  EXPECT_TRUE(watched.expired());
  mainLoop.runPosted();
}

TEST(ThreadedDispatch, comes_to_rest_once_it_is_closed_and_what_runs_has_ended) {
  MainLoop mainLoop;
  ThreadedDispatch dispatch([&](Dispatch::Work work) { mainLoop.post(std::move(work)); });
  EXPECT_TRUE(dispatch.isAtRest());
  std::latch haveBegun(2);
  std::latch held(1);
  int begunLater = 0;
  for (const Queue queue : {Queue::userInitiated, Queue::utility}) {
    dispatch.async(queue, [&, queue] {
      haveBegun.count_down();
      held.wait();
      dispatch.async(queue, [&] { ++begunLater; });
      dispatch.after(std::chrono::milliseconds(0), queue, [&] { ++begunLater; });
    });
  }
  haveBegun.wait();
  auto token = std::make_shared<int>();
  const std::weak_ptr<int> watched = token;
  dispatch.after(std::chrono::hours(1), Queue::main, [token = std::move(token)] {});

  dispatch.close();
  EXPECT_TRUE(watched.expired());
  EXPECT_FALSE(dispatch.isAtRest());
  held.count_down();
  eventually([&] { return dispatch.isAtRest(); }, "a dispatch at rest");
  EXPECT_EQ(begunLater, 0);
}

TEST(ThreadedDispatch, lets_work_hand_over_more_work_while_it_ends) {
  MainLoop mainLoop;
  std::latch haveBegun(2);
  int handedOver = 0;
  std::mutex mutex;
  {
    ThreadedDispatch dispatch([&](Dispatch::Work work) { mainLoop.post(std::move(work)); });
    auto token = std::make_shared<int>();
    for (const Queue queue : {Queue::userInitiated, Queue::utility}) {
      const Queue other = queue == Queue::utility ? Queue::userInitiated : Queue::utility;
      dispatch.async(queue, [&, other, watched = std::weak_ptr<int>(token)] {
        haveBegun.count_down();
        // The token goes with the delayed work, thus once the destructor is at work.
        eventually(
            [&] {
              dispatch.async(other, [] {});
              return watched.expired();
            },
            "the drop of the delayed work");
        dispatch.async(other, [] {});
        dispatch.after(std::chrono::milliseconds(0), other, [] {});
        const std::lock_guard lock(mutex);
        ++handedOver;
      });
    }
    haveBegun.wait();
    dispatch.after(std::chrono::hours(1), Queue::main, [token = std::move(token)] {});
  }
  EXPECT_EQ(handedOver, 2);
}

}  // namespace
}  // namespace tessaly
