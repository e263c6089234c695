// Waits for effects of other threads and processes. Every wait has a limit: a test that hangs would
// not tell what it waits for.
#pragma once

#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <thread>

namespace tessaly {

// Far longer than anything takes on a busy machine under a sanitizer, and shorter than the timeout
// of a test.
inline constexpr std::chrono::minutes longestAwaited{3};

// Polls `condition` until it is true. Past the limit the test fails with the text `awaited`, and
// the result is false. Any thread.
template <class Condition>
bool eventually(const Condition& condition, const std::string& awaited) {
  const auto end = std::chrono::steady_clock::now() + longestAwaited;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) {
      ADD_FAILURE() << "timed out waiting for: " << awaited;
      return false;
    }
    std::this_thread::sleep_for(std::chrono::microseconds(50));
  }
  return true;
}

}  // namespace tessaly
