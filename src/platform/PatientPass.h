// Asks about many items, one after the other, on a thread of its own, so that one that is never
// answered stops neither the caller nor the questions about others.
//
// A call to the system that hangs cannot be ended. Its thread waits until the system answers or the
// process ends, and keeps alive what `ask` holds; its answer is dropped. No thread is left
// otherwise, except that a cancelled one may still take a moment to end.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include "platform/StartThread.h"

namespace tessaly {

template <class Answer>
class PatientPass {
 public:
  using Clock = std::chrono::steady_clock;
  using IsCancelled = std::function<bool()>;

  struct Settings {
    // Answers the question about one item, on a thread of the pass. A long answer calls `isGivenUp`
    // now and then, which also shows that it has not hung, and ends soon once that is true.
    std::function<std::optional<Answer>(std::size_t item, const IsCancelled& isGivenUp)> ask;
    // Whether `item` would hang too after `hung` has. Called on the caller's thread; must not hang.
    std::function<bool(std::size_t hung, std::size_t item)> hangsWith;
    Clock::duration patience = std::chrono::seconds(10);
    std::function<Clock::time_point()> now = Clock::now;
    StartThread startThread = tessaly::startThread;
  };

  explicit PatientPass(Settings settings) : settings_(std::move(settings)) {}

  // The answers for the items 0 to `count` - 1; absent for those that hang. `isCancelled` is asked
  // on the caller's thread, about every 20 ms; once it is true, the remaining answers are absent.
  // If the system refuses a thread, the caller's thread asks, and hangs where an item does.
  std::vector<std::optional<Answer>> run(std::size_t count, const IsCancelled& isCancelled) const {
    std::vector<std::optional<Answer>> answers(count);
    std::vector<std::size_t> items;
    for (std::size_t item = 0; item < count; ++item) items.push_back(item);
    while (!items.empty() && !isCancelled()) {
      const auto round = std::make_shared<Round>(std::move(items), settings_.ask);
      std::thread thread = settings_.startThread([round] { round->work({}); });
      if (!thread.joinable()) round->work(isCancelled);
      items = collect(*round, isCancelled, answers);
      if (!thread.joinable()) continue;
      if (round->endsByItself()) {
        thread.join();
      } else {
        thread.detach();
      }
    }
    return answers;
  }

 private:
  // The questions that one thread asks.
  struct Round {
    Round(std::vector<std::size_t> all, decltype(Settings::ask) how)
        : items(std::move(all)), ask(std::move(how)) {}

    void work(const IsCancelled& isCancelled) {
      const IsCancelled stops = [&] {
        const bool isTold = isCancelled && isCancelled();
        const std::lock_guard lock(mutex);
        ++steps;
        isGivenUp = isGivenUp || isTold;
        return isGivenUp;
      };
      for (const std::size_t item : items) {
        if (stops()) break;
        std::optional<Answer> answer = ask(item, stops);
        const std::lock_guard lock(mutex);
        if (isGivenUp) break;
        answers.push_back(std::move(answer));
      }
      const std::lock_guard lock(mutex);
      hasEnded = true;
      ended.notify_all();
    }

    bool endsByItself() {
      const std::lock_guard lock(mutex);
      return hasEnded;
    }

    const std::vector<std::size_t> items;
    const decltype(Settings::ask) ask;
    std::mutex mutex;
    std::condition_variable ended;
    // Guarded by the mutex.
    std::vector<std::optional<Answer>> answers;  // of the first items
    std::uint64_t steps = 0;                     // signs of life
    bool isGivenUp = false;
    bool hasEnded = false;
  };

  // Waits until the round has ended, hangs or is cancelled, gives it up and stores its answers.
  // Returns the items that remain to be asked about.
  std::vector<std::size_t> collect(Round& round, const IsCancelled& isCancelled,
                                   std::vector<std::optional<Answer>>& answers) const {
    std::unique_lock lock(round.mutex);
    const bool hasHung = hangs(round, lock, isCancelled);
    round.isGivenUp = true;
    const std::size_t done = round.answers.size();
    for (std::size_t i = 0; i < done; ++i) answers[round.items[i]] = std::move(round.answers[i]);
    std::vector<std::size_t> rest;
    if (!hasHung || done == round.items.size()) return rest;
    const std::size_t hung = round.items[done];
    for (std::size_t i = done + 1; i < round.items.size(); ++i) {
      if (!settings_.hangsWith(hung, round.items[i])) rest.push_back(round.items[i]);
    }
    return rest;
  }

  // Whether the round hangs; false once it has ended or is cancelled.
  bool hangs(Round& round, std::unique_lock<std::mutex>& lock,
             const IsCancelled& isCancelled) const {
    constexpr auto betweenLooks = std::chrono::milliseconds(20);
    std::uint64_t steps = round.steps;
    Clock::time_point since = settings_.now();
    while (!round.ended.wait_for(lock, betweenLooks, [&] { return round.hasEnded; })) {
      lock.unlock();
      const bool isTold = isCancelled();
      lock.lock();
      if (isTold || round.hasEnded) return false;
      const Clock::time_point now = settings_.now();
      if (round.steps != steps) {
        steps = round.steps;
        since = now;
      } else if (now - since >= settings_.patience) {
        return true;
      }
    }
    return false;
  }

  Settings settings_;
};

}  // namespace tessaly
