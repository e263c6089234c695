// Waiting for what other threads and processes bring about. No wait of a test is without an end:
// one that hangs would tell nothing of what it waits for.
#pragma once

#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <thread>

namespace tessaly {

// Far more than anything takes on a busy machine and under a sanitizer, and less than the time
// after which a test is ended from outside.
inline constexpr std::chrono::minutes longestAwaited{3};

// Looks at `condition` until it holds. Past the limit the test fails, with the words for what was
// awaited, and the answer is false. From any thread.
template <class Condition>
bool eventually(const Condition& condition, const std::string& awaited) {
  const auto end = std::chrono::steady_clock::now() + longestAwaited;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) {
      ADD_FAILURE() << "in vain awaited: " << awaited;
      return false;
    }
    std::this_thread::sleep_for(std::chrono::microseconds(50));
  }
  return true;
}

}  // namespace tessaly
