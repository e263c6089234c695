// A moment until which one waits, on the clock that nobody sets back. A plain value.
#pragma once

#include <chrono>
#include <optional>

namespace tessaly {

class Deadline {
 public:
  static Deadline never() { return Deadline(std::nullopt); }

  // So many seconds from now on. Any number will do: what is negative, or is no number, has passed
  // already, and what lies decades ahead never passes.
  static Deadline after(double seconds);

  bool hasPassed() const;

  // What is left, in the form that poll() takes: milliseconds, rounded up so that a wait does not
  // end early; 0 once it has passed, -1 for never. An hour at most: who waits looks again.
  int pollTimeout() const;

 private:
  using Clock = std::chrono::steady_clock;

  explicit Deadline(std::optional<Clock::time_point> moment) : moment_(moment) {}

  std::optional<Clock::time_point> moment_;  // absent: never
};

}  // namespace tessaly
