// The items that a scan could not read: their number, and the first of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/SystemError.h"

namespace tessaly {

struct UnreadableItems {
  // Number of items that are kept; the others are only counted.
  static constexpr std::size_t mostKept = 200;

  std::uint64_t count = 0;
  std::vector<SystemError> first;  // in the order of the walk, each with its whole path

  void add(const SystemError& failure) {
    ++count;
    if (first.size() < mostKept) first.push_back(failure);
  }

  friend bool operator==(const UnreadableItems&, const UnreadableItems&) = default;
};

}  // namespace tessaly
