// Carries a value that changes often to the main thread at a rate it can use: only the newest value
// is kept, and at most one update waits on the main queue.
//
// There is no timer. Each value is delivered by an update that is on the main queue already, so
// anything that is posted after the last put() runs after the last value is delivered.
//
// put() may be called from any thread. The receiver is called on the main queue, also after the
// object is destroyed.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include "platform/Dispatch.h"

namespace tessaly {

template <class Value>
class NewestValue {
 public:
  using Receiver = std::function<void(const Value& value)>;

  // `dispatch` must outlive the object.
  NewestValue(Dispatch& dispatch, Receiver receiver)
      : dispatch_(dispatch), waiting_(std::make_shared<Waiting>(std::move(receiver))) {}

  void put(const Value& value) {
    if (!waiting_->put(value)) return;
    dispatch_.async(Dispatch::Queue::main,
                    [waiting = waiting_] { waiting->receiver(waiting->take()); });
  }

 private:
  struct Waiting {
    explicit Waiting(Receiver r) : receiver(std::move(r)) {}

    // Returns true if no value was waiting, so that the caller must post a delivery.
    bool put(const Value& newest) {
      const std::lock_guard lock(mutex);
      const bool isFirst = !value;
      value = newest;
      return isFirst;
    }

    Value take() {
      const std::lock_guard lock(mutex);
      return *std::exchange(value, std::nullopt);
    }

    const Receiver receiver;
    std::mutex mutex;
    std::optional<Value> value;
  };

  Dispatch& dispatch_;
  std::shared_ptr<Waiting> waiting_;
};

}  // namespace tessaly
