// Calls of the system that a signal may interrupt.
#pragma once

#include <cerrno>

namespace tessaly {

// Calls again what a signal interrupted.
template <class Call>
auto uninterrupted(const Call& call) {
  while (true) {
    const auto result = call();
    if (result >= 0 || errno != EINTR) return result;
  }
}

}  // namespace tessaly
