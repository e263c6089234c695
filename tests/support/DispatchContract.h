// Tests for every Dispatch. To run them on an implementation, define a harness:
//
//   struct Harness {
//     Dispatch& dispatch();
//     // Runs the main queue on the calling thread until `done` is true. Only work on the main
//     // queue makes it true.
//     void runMainUntil(const std::function<bool()>& done);
//     std::chrono::nanoseconds now();  // of the clock that after() uses
//   };
//   INSTANTIATE_TYPED_TEST_SUITE_P(MyDispatch, DispatchContract, Harness);
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

#include "platform/Dispatch.h"

namespace tessaly {

inline constexpr std::array<Dispatch::Queue, 3> allQueues = {
    Dispatch::Queue::main, Dispatch::Queue::userInitiated, Dispatch::Queue::utility};

template <class Harness>
class DispatchContract : public ::testing::Test {
 protected:
  Dispatch& dispatch() { return harness_.dispatch(); }

  Harness harness_;
};

TYPED_TEST_SUITE_P(DispatchContract);

TYPED_TEST_P(DispatchContract, async_and_after_run_no_main_work) {
  using Queue = Dispatch::Queue;
  int ran = 0;
  this->dispatch().async(Queue::main, [&] { ++ran; });
  this->dispatch().after(std::chrono::milliseconds(0), Queue::main, [&] { ++ran; });
  EXPECT_EQ(ran, 0);
  this->harness_.runMainUntil([&] { return ran == 2; });
}

TYPED_TEST_P(DispatchContract, main_work_runs_in_order) {
  using Queue = Dispatch::Queue;
  std::vector<int> order;
  for (int k = 0; k < 100; ++k) {
    this->dispatch().async(Queue::main, [&order, k] { order.push_back(k); });
  }
  this->harness_.runMainUntil([&] { return order.size() == 100; });
  EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TYPED_TEST_P(DispatchContract, main_work_runs_on_the_main_thread_wherever_it_comes_from) {
  using Queue = Dispatch::Queue;
  std::vector<std::thread::id> ranOn;
  const auto note = [&ranOn] { ranOn.push_back(std::this_thread::get_id()); };
  for (const Queue from : allQueues) {
    this->dispatch().async(from, [&, note] { this->dispatch().async(Queue::main, note); });
  }
  this->dispatch().after(std::chrono::milliseconds(1), Queue::main, note);
  this->harness_.runMainUntil([&] { return ranOn.size() == 4; });
  for (const std::thread::id& thread : ranOn) EXPECT_EQ(thread, std::this_thread::get_id());
}

TYPED_TEST_P(DispatchContract, each_piece_of_work_runs_once) {
  using Queue = Dispatch::Queue;
  constexpr int pieces = 200;
  std::vector<int> runs(allQueues.size() * pieces);
  std::size_t total = 0;
  for (std::size_t q = 0; q < allQueues.size(); ++q) {
    for (std::size_t k = 0; k < pieces; ++k) {
      const std::size_t piece = q * pieces + k;
      this->dispatch().async(allQueues[q], [&, piece] {
        this->dispatch().async(Queue::main, [&, piece] {
          ++runs[piece];
          ++total;
        });
      });
    }
  }
  this->harness_.runMainUntil([&] { return total == runs.size(); });
  EXPECT_EQ(std::count(runs.begin(), runs.end(), 1), static_cast<std::ptrdiff_t>(runs.size()));
}

TYPED_TEST_P(DispatchContract, work_of_many_threads_keeps_the_order_of_each_thread) {
  using Queue = Dispatch::Queue;
  constexpr std::size_t threadCount = 4;
  constexpr std::size_t pieces = 250;
  std::array<std::vector<std::size_t>, threadCount> orders;
  std::size_t total = 0;
  std::vector<std::thread> threads;
  for (std::size_t t = 0; t < threadCount; ++t) {
    threads.emplace_back([&, t] {
      for (std::size_t k = 0; k < pieces; ++k) {
        this->dispatch().async(Queue::main, [&, t, k] {
          orders[t].push_back(k);
          ++total;
        });
      }
    });
  }
  this->harness_.runMainUntil([&, joined = false]() mutable {
    if (!joined) {
      for (std::thread& thread : threads) thread.join();
      joined = true;
    }
    return total == threadCount * pieces;
  });
  for (const std::vector<std::size_t>& order : orders) {
    ASSERT_EQ(order.size(), pieces);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
  }
}

TYPED_TEST_P(DispatchContract, work_may_add_work_to_its_own_queue) {
  using Queue = Dispatch::Queue;
  for (const Queue queue : allQueues) {
    bool isDone = false;
    this->dispatch().async(queue, [&, queue] {
      this->dispatch().async(queue,
                             [&] { this->dispatch().async(Queue::main, [&] { isDone = true; }); });
    });
    this->harness_.runMainUntil([&] { return isDone; });
    EXPECT_TRUE(isDone);
  }
}

TYPED_TEST_P(DispatchContract, delayed_work_runs_on_its_queue_and_not_before_its_time) {
  using Queue = Dispatch::Queue;
  constexpr std::chrono::milliseconds delay(20);
  for (const Queue queue : allQueues) {
    const std::chrono::nanoseconds start = this->harness_.now();
    std::chrono::nanoseconds ranAt{0};
    bool isDone = false;
    this->dispatch().after(delay, queue, [&] {
      ranAt = this->harness_.now();
      this->dispatch().async(Queue::main, [&] { isDone = true; });
    });
    this->harness_.runMainUntil([&] { return isDone; });
    EXPECT_GE(ranAt, start + delay);
  }
}

TYPED_TEST_P(DispatchContract, work_with_equal_delays_runs_in_order) {
  using Queue = Dispatch::Queue;
  std::vector<int> order;
  for (int k = 0; k < 20; ++k) {
    this->dispatch().after(std::chrono::milliseconds(5), Queue::main,
                           [&order, k] { order.push_back(k); });
  }
  this->harness_.runMainUntil([&] { return order.size() == 20; });
  EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TYPED_TEST_P(DispatchContract, main_work_is_destroyed_once_it_has_run) {
  using Queue = Dispatch::Queue;
  auto held = std::make_shared<int>(0);
  const std::weak_ptr<int> watched = held;
  bool isDone = false;
  this->dispatch().async(Queue::main, [held = std::move(held)] { ++*held; });
  this->dispatch().async(Queue::main, [&] { isDone = true; });
  this->harness_.runMainUntil([&] { return isDone; });
  EXPECT_TRUE(watched.expired());
}

REGISTER_TYPED_TEST_SUITE_P(
    DispatchContract, async_and_after_run_no_main_work, main_work_runs_in_order,
    main_work_runs_on_the_main_thread_wherever_it_comes_from, each_piece_of_work_runs_once,
    work_of_many_threads_keeps_the_order_of_each_thread, work_may_add_work_to_its_own_queue,
    delayed_work_runs_on_its_queue_and_not_before_its_time, work_with_equal_delays_runs_in_order,
    main_work_is_destroyed_once_it_has_run);

}  // namespace tessaly
