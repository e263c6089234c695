#include "platform/WorkerQueue.h"

#include <gtest/gtest.h>
#include <pthread.h>
#if defined(__linux__)
#include <sys/resource.h>
#endif

#include <array>
#include <atomic>
#include <future>
#include <latch>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "support/Eventually.h"
#include "support/Needs.h"
#include "support/RefusedThreads.h"

namespace tessaly {
namespace {

void waitUntilNoneIsBusy(const WorkerQueue& queue) {
  eventually(
      [&] {
        const WorkerQueue::Counts counts = queue.counts();
        return counts.busy == 0 && counts.waiting == 0;
      },
      "the end of all work");
}

template <class Result>
Result resultOn(WorkerQueue& queue, Result (*work)()) {
  std::promise<Result> promise;
  queue.async([&] { promise.set_value(work()); });
  Result result = promise.get_future().get();
  waitUntilNoneIsBusy(queue);
  return result;
}

TEST(WorkerQueue, no_thread_is_started_before_there_is_work) {
  const WorkerQueue queue({.name = "test"});
  EXPECT_EQ(queue.counts().threads, 0u);
}

TEST(WorkerQueue, a_queue_starts_more_threads_while_its_work_blocks) {
  // Each piece of work waits for all others, so none ends before all have begun.
  constexpr int pieces = 20;
  WorkerQueue queue({.name = "test"});
  std::latch allBegun(pieces);
  for (int k = 0; k < pieces; ++k) queue.async([&] { allBegun.arrive_and_wait(); });
  waitUntilNoneIsBusy(queue);
  EXPECT_TRUE(allBegun.try_wait());
}

TEST(WorkerQueue, closing_drops_pending_work_and_does_not_wait_for_running_work) {
  std::atomic<int> begun = 0;
  std::latch held(1);
  std::latch hasBegun(1);
  {
    WorkerQueue queue({.name = "test", .maxThreads = 1});
    queue.async([&] {
      ++begun;
      hasBegun.count_down();
      held.wait();
    });
    queue.async([&] { ++begun; });
    hasBegun.wait();
    // The running work ends only after this.
    queue.close();
    EXPECT_EQ(queue.counts().busy, 1u);
    EXPECT_EQ(queue.counts().waiting, 0u);
    queue.async([&] { ++begun; });
    EXPECT_EQ(queue.counts().waiting, 0u);
    held.count_down();
    waitUntilNoneIsBusy(queue);
  }
  EXPECT_EQ(begun, 1);
}

TEST(WorkerQueue, new_work_goes_to_an_idle_thread) {
  WorkerQueue queue({.name = "test"});
  std::set<std::thread::id> threads;
  for (int k = 0; k < 50; ++k) {
    threads.insert(resultOn<std::thread::id>(queue, [] { return std::this_thread::get_id(); }));
  }
  EXPECT_EQ(threads.size(), 1u);
  EXPECT_EQ(queue.counts().threads, 1u);
}

TEST(WorkerQueue, only_a_few_idle_threads_are_kept) {
  constexpr int pieces = 20;
  WorkerQueue queue({.name = "test", .maxIdleThreads = 3});
  std::latch allBegun(pieces);
  for (int k = 0; k < pieces; ++k) queue.async([&] { allBegun.arrive_and_wait(); });
  waitUntilNoneIsBusy(queue);
  EXPECT_LE(queue.counts().threads, 3u);
  // The remaining threads still work.
  EXPECT_EQ(resultOn<int>(queue, [] { return 7; }), 7);
}

TEST(WorkerQueue, work_beyond_the_maximum_number_of_threads_waits) {
  WorkerQueue queue({.name = "test", .maxThreads = 2});
  std::latch release(1);
  std::atomic<int> running = 0;
  std::atomic<int> most = 0;
  for (int k = 0; k < 6; ++k) {
    queue.async([&] {
      const int now = ++running;
      for (int seen = most; seen < now && !most.compare_exchange_weak(seen, now);) {
      }
      release.wait();
      --running;
    });
  }
  EXPECT_EQ(queue.counts().threads, 2u);
  release.count_down();
  waitUntilNoneIsBusy(queue);
  EXPECT_LE(most, 2);
  EXPECT_EQ(running, 0);
}

TEST(WorkerQueue, work_begins_in_the_order_in_which_it_was_added) {
  WorkerQueue queue({.name = "test", .maxThreads = 1});
  std::vector<int> order;
  for (int k = 0; k < 100; ++k) queue.async([&order, k] { order.push_back(k); });
  waitUntilNoneIsBusy(queue);
  ASSERT_EQ(order.size(), 100u);
  for (int k = 0; k < 100; ++k) EXPECT_EQ(order[static_cast<std::size_t>(k)], k);
}

TEST(WorkerQueue, destruction_waits_for_running_work_and_drops_the_rest) {
  bool firstHasEnded = false;
  bool secondHasRun = false;
  {
    WorkerQueue queue({.name = "test", .maxThreads = 1});
    std::latch firstHasBegun(1);
    auto token = std::make_shared<int>();
    queue.async([&, watched = std::weak_ptr<int>(token)] {
      firstHasBegun.count_down();
      // Ends only after the destructor has begun, which drops the second piece of work.
      eventually([&] { return watched.expired(); }, "the drop of what waits");
      firstHasEnded = true;
    });
    firstHasBegun.wait();
    queue.async([&, token = std::move(token)] { secondHasRun = true; });
  }
  EXPECT_TRUE(firstHasEnded);
  EXPECT_FALSE(secondHasRun);
}

TEST(WorkerQueue, work_added_after_a_stop_is_dropped) {
  WorkerQueue queue({.name = "test"});
  EXPECT_EQ(resultOn<int>(queue, [] { return 1; }), 1);
  queue.stop();
  const auto token = std::make_shared<int>();
  queue.async([token] {});
  EXPECT_EQ(token.use_count(), 1);
  EXPECT_EQ(queue.counts().threads, 0u);
}

TEST(WorkerQueue, running_work_may_add_work) {
  WorkerQueue queue({.name = "test"});
  std::promise<int> promise;
  queue.async([&] { queue.async([&] { promise.set_value(3); }); });
  EXPECT_EQ(promise.get_future().get(), 3);
}

TEST(WorkerQueue, the_threads_of_a_queue_have_its_name) {
  WorkerQueue queue({.name = "a rather long name"});
  const std::string name = resultOn<std::string>(queue, [] {
    std::array<char, 64> buffer{};
    pthread_getname_np(pthread_self(), buffer.data(), buffer.size());
    return std::string(buffer.data());
  });
  EXPECT_TRUE(std::string("a rather long name").starts_with(name));
  EXPECT_GE(name.size(), 15u);
}

TEST(WorkerQueue, work_is_kept_while_no_thread_is_granted) {
  RefusedThreads system;
  WorkerQueue queue({.name = "test", .startThread = system.startThread()});
  std::atomic<int> ran = 0;
  for (int k = 0; k < 3; ++k) EXPECT_FALSE(queue.async([&] { ++ran; }));
  EXPECT_FALSE(queue.grow());
  EXPECT_EQ(queue.counts().threads, 0U);
  EXPECT_EQ(queue.counts().waiting, 3U);
  system.relent();
  EXPECT_TRUE(queue.grow());
  waitUntilNoneIsBusy(queue);
  EXPECT_EQ(ran, 3);
}

TEST(WorkerQueue, the_existing_threads_run_all_work_when_no_more_are_granted) {
  RefusedThreads system(false);
  WorkerQueue queue({.name = "test", .startThread = system.startThread()});
  std::latch release(1);
  std::vector<int> order;
  EXPECT_TRUE(queue.async([&] { release.wait(); }));
  system.refuse();
  for (int k = 0; k < 5; ++k) EXPECT_FALSE(queue.async([&order, k] { order.push_back(k); }));
  EXPECT_EQ(queue.counts().threads, 1U);
  release.count_down();
  waitUntilNoneIsBusy(queue);
  EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3, 4}));
  EXPECT_TRUE(queue.grow());
}

TEST(WorkerQueue, refused_threads_are_started_later) {
  constexpr int pieces = 4;
  RefusedThreads system(false);
  WorkerQueue queue({.name = "test", .startThread = system.startThread()});
  std::latch allBegun(pieces);
  queue.async([&] { allBegun.arrive_and_wait(); });
  system.refuse();
  for (int k = 1; k < pieces; ++k) queue.async([&] { allBegun.arrive_and_wait(); });
  EXPECT_FALSE(queue.grow());
  EXPECT_FALSE(allBegun.try_wait());
  system.relent();
  EXPECT_TRUE(queue.grow());
  waitUntilNoneIsBusy(queue);
  EXPECT_TRUE(allBegun.try_wait());
}

#if defined(__linux__)
TEST(WorkerQueue, a_queue_of_low_priority_is_nicer_than_the_thread_that_created_it) {
  const auto niceness = [] { return getpriority(PRIO_PROCESS, 0); };
  const int own = niceness();
  if (own > 14) GTEST_SKIP() << needs(Need::spareNiceness, "the tests run at the lowest priority");
  WorkerQueue low({.name = "test", .priority = WorkerQueue::Priority::low});
  WorkerQueue normal({.name = "test"});
  EXPECT_GT(resultOn<int>(low, niceness), own);
  EXPECT_EQ(resultOn<int>(normal, niceness), own);
  EXPECT_EQ(niceness(), own);
}
#endif

}  // namespace
}  // namespace tessaly
