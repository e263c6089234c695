#include "platform/ThreadedDispatch.h"

#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <latch>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/DispatchContract.h"
#include "support/Eventually.h"
#include "support/ForkedChild.h"
#include "support/MainLoop.h"
#include "support/RefusedThreads.h"

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

TEST(ThreadedDispatch, work_for_a_worker_queue_runs_on_another_thread) {
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

TEST(ThreadedDispatch, work_that_blocks_does_not_delay_other_work) {
  ThreadedHarness harness;
  // The first work of each queue ends only after two later ones have run.
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

TEST(ThreadedDispatch, distant_delayed_work_does_not_delay_nearer_work) {
  ThreadedHarness harness;
  bool isNearDone = false;
  bool isFarDone = false;
  harness.dispatch().after(std::chrono::hours(1), Queue::main, [&] { isFarDone = true; });
  harness.dispatch().after(std::chrono::milliseconds(1), Queue::main, [&] { isNearDone = true; });
  harness.runMainUntil([&] { return isNearDone; });
  EXPECT_FALSE(isFarDone);
}

TEST(ThreadedDispatch, pending_delayed_work_is_dropped_on_destruction) {
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

TEST(ThreadedDispatch, a_closed_dispatch_is_at_rest_after_running_work_has_ended) {
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

TEST(ThreadedDispatch, running_work_may_pass_on_more_work_during_destruction) {
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
        // The token is destroyed with the delayed work, so only after the destructor has begun.
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

// --- When threads are refused --------------------------------------------------------------------

// A main queue, and a system that limits the number of threads.
class FewThreads : public ::testing::Test {
 protected:
  // Passes work to each worker queue, and delayed work; each records on the main queue that it has
  // run.
  void handOverWork() {
    for (const Queue queue : {Queue::userInitiated, Queue::utility}) {
      for (int k = 0; k < pieces; ++k) {
        dispatch_->async(queue, [this] { note(); });
        dispatch_->after(std::chrono::milliseconds(k), queue, [this] { note(); });
      }
    }
    dispatch_->after(std::chrono::milliseconds(1), Queue::main, [this] { note(); });
  }
  static constexpr int pieces = 20;
  static constexpr int handedOver = 4 * pieces + 1;

  void note() {
    dispatch_->async(Queue::main, [this] { ++ran_; });
  }

  MainLoop mainLoop_;
  RefusedThreads system_;
  std::unique_ptr<ThreadedDispatch> dispatch_ = std::make_unique<ThreadedDispatch>(
      [this](Dispatch::Work work) { mainLoop_.post(std::move(work)); }, system_.startThread());
  int ran_ = 0;
};

TEST_F(FewThreads, refused_threads_do_not_prevent_work_once_some_are_granted) {
  handOverWork();
  // A thread is requested when each piece of work is added, and repeatedly afterwards.
  mainLoop_.runUntil([this] { return system_.refused() > 2 * handedOver; });
  EXPECT_EQ(ran_, 1);  // the work for the main queue
  system_.relent();
  mainLoop_.runUntil([this] { return ran_ == handedOver; });
}

TEST_F(FewThreads, existing_threads_run_all_work_when_no_more_are_granted) {
  system_.relent();
  for (const Queue queue : {Queue::userInitiated, Queue::utility}) {
    dispatch_->after(std::chrono::milliseconds(0), queue, [this] { note(); });
  }
  mainLoop_.runUntil([this] { return ran_ == 2; });
  system_.refuse();
  handOverWork();
  mainLoop_.runUntil([this] { return ran_ == 2 + handedOver; });
}

TEST_F(FewThreads, work_waiting_behind_blocking_work_runs_once_a_thread_is_granted) {
  system_.relent();
  std::latch laterHasRun(1);
  bool isDone = false;
  std::latch hasBegun(1);
  dispatch_->async(Queue::utility, [&] {
    hasBegun.count_down();
    laterHasRun.wait();
    dispatch_->async(Queue::main, [&] { isDone = true; });
  });
  hasBegun.wait();
  system_.refuse();
  dispatch_->async(Queue::utility, [&] { laterHasRun.count_down(); });
  mainLoop_.runUntil([this] { return system_.refused() > 2; });
  EXPECT_FALSE(isDone);
  system_.relent();
  mainLoop_.runUntil([&] { return isDone; });
}

TEST_F(FewThreads, delayed_work_for_the_main_queue_keeps_its_order) {
  std::vector<int> order;
  for (const int k : {30, 0, 20, 10}) {
    dispatch_->after(std::chrono::milliseconds(k), Queue::main,
                     [&order, k] { order.push_back(k); });
  }
  mainLoop_.runUntil([&] { return order.size() == 4; });
  EXPECT_EQ(order, (std::vector<int>{0, 10, 20, 30}));
}

TEST_F(FewThreads, work_without_a_thread_is_dropped_on_destruction) {
  auto token = std::make_shared<int>();
  const std::weak_ptr<int> watched = token;
  dispatch_->async(Queue::utility, [token] {});
  dispatch_->after(std::chrono::hours(1), Queue::main, [token = std::move(token)] {});
  dispatch_.reset();
  EXPECT_TRUE(watched.expired());
  // The pending retry does nothing.
  mainLoop_.runPosted();
  mainLoop_.runPosted();
}

TEST_F(FewThreads, a_closed_dispatch_drops_work_without_a_thread) {
  handOverWork();
  dispatch_->close();
  system_.relent();
  EXPECT_TRUE(dispatch_->isAtRest());
  for (int turn = 0; turn < 5; ++turn) mainLoop_.runPosted();
  EXPECT_EQ(ran_, 0);
  EXPECT_TRUE(dispatch_->isAtRest());
}

// Here the system itself refuses threads.
TEST(ThreadedDispatchAtLimit, all_work_runs_after_the_limit_of_threads_was_lifted) {
  EXPECT_EQ(asOtherUser([]() -> std::string {
              if (std::string wrong = refuseThreads(); !wrong.empty()) return wrong;
              ThreadedHarness harness;
              int ran = 0;
              const auto note = [&] { harness.dispatch().async(Queue::main, [&] { ++ran; }); };
              for (const Queue queue : {Queue::userInitiated, Queue::utility}) {
                for (int k = 0; k < 10; ++k) {
                  harness.dispatch().async(queue, note);
                  harness.dispatch().after(std::chrono::milliseconds(k), queue, note);
                }
              }
              bool isLifted = false;
              harness.dispatch().after(std::chrono::milliseconds(150), Queue::main,
                                       [&] { isLifted = true; });
              harness.runMainUntil([&] { return isLifted; });
              if (ran != 0) return std::to_string(ran) + " pieces without a thread";
              if (std::string wrong = grantThreads(); !wrong.empty()) return wrong;
              harness.runMainUntil([&] { return ran == 40; });
              return "";
            }),
            "");
}

}  // namespace
}  // namespace tessaly
