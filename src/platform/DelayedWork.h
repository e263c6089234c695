// Work that waits for its time. Taken out in the order of its times; work of the same time in the
// order in which it was added.
//
// Has no clock of its own: callers pass times as durations since a fixed moment. Not safe for use
// by several threads at once.
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
    // A multimap inserts behind equal keys.
    items_.emplace(due, Item{queue, std::move(work)});
  }

  // When the next work is due; absent if there is none.
  std::optional<Time> nextDue() const {
    if (items_.empty()) return std::nullopt;
    return items_.begin()->first;
  }

  // Takes the next work out, if it is due at `now`.
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
