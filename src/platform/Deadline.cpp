#include "platform/Deadline.h"

#include <algorithm>

namespace tessaly {

Deadline Deadline::after(double seconds) {
  // Far below the range of the clock.
  constexpr double decades = 1e9;
  if (seconds > decades) return never();
  const std::chrono::duration<double> left(seconds > 0 ? seconds : 0);
  return Deadline(Clock::now() + std::chrono::duration_cast<Clock::duration>(left));
}

bool Deadline::hasPassed() const {
  return moment_ && Clock::now() >= *moment_;
}

int Deadline::pollTimeout() const {
  if (!moment_) return -1;
  using std::chrono::milliseconds;
  const milliseconds left = std::chrono::ceil<milliseconds>(*moment_ - Clock::now());
  return static_cast<int>(std::clamp<milliseconds::rep>(left.count(), 0, 3600 * 1000));
}

}  // namespace tessaly
