// The end of a wait, on a clock that is never set back. A plain value.
#pragma once

#include <chrono>
#include <optional>

namespace tessaly {

class Deadline {
 public:
  static Deadline never() { return Deadline(std::nullopt); }

  // The moment `seconds` from now. Any number is allowed: for negative ones and NaN it has already
  // passed, and more than some decades mean never.
  static Deadline after(double seconds);

  bool hasPassed() const;

  // The remaining time for poll(): milliseconds, rounded up so that a wait does not end early; 0
  // once it has passed, -1 for never. At most an hour, so callers must check hasPassed() after each
  // wait.
  int pollTimeout() const;

 private:
  using Clock = std::chrono::steady_clock;

  explicit Deadline(std::optional<Clock::time_point> moment) : moment_(moment) {}

  std::optional<Clock::time_point> moment_;  // absent: never
};

}  // namespace tessaly
