#include "session/ProgressRelay.h"

#include <mutex>
#include <optional>
#include <utility>

namespace tessaly {

namespace {

// The newest value, until it is delivered.
template <class Value>
class Newest {
 public:
  // Returns true if no value was waiting, so that the caller must post a delivery.
  bool put(const Value& value) {
    const std::lock_guard lock(mutex_);
    const bool isFirst = !value_;
    value_ = value;
    return isFirst;
  }

  Value take() {
    const std::lock_guard lock(mutex_);
    return *std::exchange(value_, std::nullopt);
  }

 private:
  std::mutex mutex_;
  std::optional<Value> value_;
};

}  // namespace

struct ProgressRelay::Waiting {
  explicit Waiting(Receiver r) : receiver(std::move(r)) {}

  const Receiver receiver;
  Newest<std::string> line;
  Newest<double> percent;
};

ProgressRelay::ProgressRelay(Dispatch& dispatch, Receiver receiver)
    : dispatch_(dispatch), waiting_(std::make_shared<Waiting>(std::move(receiver))) {}

void ProgressRelay::line(const std::string& line) {
  if (!waiting_->line.put(line)) return;
  dispatch_.async(Dispatch::Queue::main,
                  [waiting = waiting_] { waiting->receiver.line(waiting->line.take()); });
}

void ProgressRelay::percent(double fraction) {
  if (!waiting_->percent.put(fraction)) return;
  dispatch_.async(Dispatch::Queue::main,
                  [waiting = waiting_] { waiting->receiver.percent(waiting->percent.take()); });
}

}  // namespace tessaly
