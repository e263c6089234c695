// Work that waits for its time. Taken out in the order of its times, and of two pieces with the
// same time the one that was added first comes first.
//
// It holds no clock: times are given by whoever asks, as the time since some fixed moment. Not safe
// for use by several threads at once.
#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <utility>

#include "platform/Dispatch.h"

namespace tessaly {

class DelayedWork {
 public:
  using Time = std::chrono::nanoseconds;

  struct Item {
    Dispatch::Queue queue;
    Dispatch::Work work;
  };

  void add(Time due, Dispatch::Queue queue, Dispatch::Work work) {
    // A multimap puts equal keys behind those it has.
    items_.emplace(due, Item{queue, std::move(work)});
  }

  // When the next piece is due; absent while nothing waits.
  std::optional<Time> nextDue() const {
    if (items_.empty()) return std::nullopt;
    return items_.begin()->first;
  }

  // The next piece, if it is due at `now`.
  std::optional<Item> takeDue(Time now) {
    const auto first = items_.begin();
    if (first == items_.end() || first->first > now) return std::nullopt;
    Item item = std::move(first->second);
    items_.erase(first);
    return item;
  }

 private:
  std::multimap<Time, Item> items_;
};

}  // namespace tessaly
