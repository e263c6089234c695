#include "system/VolumeCalls.h"

#include <algorithm>
#include <deque>
#include <map>
#include <vector>

namespace tessaly {

class VolumeCalls::Calls : public std::enable_shared_from_this<Calls> {
 public:
  using End = std::function<void(bool isAnswered)>;

  struct Call {
    Volume volume;
    std::chrono::milliseconds patience;
    Dispatch::Work question;
    End end;
  };

  explicit Calls(Dispatch& dispatch) : dispatch_(dispatch) {}

  void add(Call call) {
    const auto running = running_.find(call.volume);
    if (running != running_.end() && running->second.hangs) {
      endLater(std::move(call.end));
      return;
    }
    waiting_.push_back(std::move(call));
    startWhatCan();
  }

 private:
  struct Running {
    std::uint64_t number = 0;
    End end;
    bool hangs = false;
  };

  // Starts waiting calls in their order, but passes over those to a busy volume.
  void startWhatCan() {
    for (auto call = waiting_.begin(); call != waiting_.end() && active_ < mostAtOnce;) {
      if (running_.contains(call->volume)) {
        ++call;
        continue;
      }
      const Call next = std::move(*call);
      call = waiting_.erase(call);
      start(next);
    }
  }

  void start(const Call& call) {
    const std::uint64_t number = ++lastNumber_;
    running_[call.volume] = {.number = number, .end = call.end};
    ++active_;
    const std::weak_ptr<Calls> self = weak_from_this();
    // Only the question goes to the worker; `end` and the objects it holds stay on this thread.
    dispatch_.async(Dispatch::Queue::utility,
                    [&dispatch = dispatch_, self, volume = call.volume, ask = call.question] {
                      ask();
                      dispatch.async(Dispatch::Queue::main, [self, volume] {
                        if (const auto calls = self.lock()) calls->takeAnswer(volume);
                      });
                    });
    dispatch_.after(call.patience, Dispatch::Queue::main, [self, volume = call.volume, number] {
      if (const auto calls = self.lock()) calls->giveUp(volume, number);
    });
  }

  void takeAnswer(const Volume& volume) {
    const auto found = running_.find(volume);
    const Running answered = std::move(found->second);
    running_.erase(found);
    if (!answered.hangs) --active_;
    startWhatCan();
    if (!answered.hangs) answered.end(true);
  }

  void giveUp(const Volume& volume, std::uint64_t number) {
    const auto found = running_.find(volume);
    if (found == running_.end() || found->second.number != number) return;
    found->second.hangs = true;
    --active_;
    std::vector<End> ends = {std::exchange(found->second.end, {})};
    std::erase_if(waiting_, [&](Call& call) {
      if (call.volume != volume) return false;
      ends.push_back(std::move(call.end));
      return true;
    });
    startWhatCan();
    for (const End& end : ends) end(false);
  }

  void endLater(End end) {
    dispatch_.async(Dispatch::Queue::main, [self = weak_from_this(), end = std::move(end)] {
      if (!self.expired()) end(false);
    });
  }

  Dispatch& dispatch_;
  std::map<Volume, Running> running_;
  std::deque<Call> waiting_;
  std::size_t active_ = 0;  // running calls, except those that hang
  std::uint64_t lastNumber_ = 0;
};

VolumeCalls::VolumeCalls(Dispatch& dispatch) : calls_(std::make_shared<Calls>(dispatch)) {}

VolumeCalls::~VolumeCalls() = default;

void VolumeCalls::add(const Volume& volume, std::chrono::milliseconds patience,
                      Dispatch::Work question, std::function<void(bool isAnswered)> end) {
  calls_->add({volume, patience, std::move(question), std::move(end)});
}

}  // namespace tessaly
