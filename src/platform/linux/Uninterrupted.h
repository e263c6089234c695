// System calls that a signal may interrupt.
#pragma once

#include <cerrno>

namespace tessaly {

// Repeats the call while it fails with EINTR.
template <class Call>
auto uninterrupted(const Call& call) {
  while (true) {
    const auto result = call();
    if (result >= 0 || errno != EINTR) return result;
  }
}

}  // namespace tessaly
