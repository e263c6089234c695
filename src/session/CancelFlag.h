// The one thing that the main thread and a running walk share: whether the walk should stop.
// Safe from any thread.
//
// The walk asks once for each of its items, a million times and more, so the boolean is an atomic
// one and needs no lock: a mutex around it took 40 ns an item, a twentieth of the walk, this
// takes 1.5. What was written before set() is there to be read for whoever has seen isSet().
#pragma once

#include <atomic>

namespace tessaly {

class CancelFlag {
 public:
  void set() { value_.store(true, std::memory_order_release); }
  bool isSet() const { return value_.load(std::memory_order_acquire); }

 private:
  std::atomic<bool> value_ = false;
};

}  // namespace tessaly
