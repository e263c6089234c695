// Questions to volumes, each of which may never answer.
//
// Each question runs on a worker queue and is given up when its time is over. A volume is asked one
// thing at a time: while a question to it hangs, which cannot be cancelled, the questions waiting
// for the same volume are given up with it, and new ones at once, so a dead volume takes one thread
// at most. Once it has answered after all, it is asked again; the late answer itself is dropped.
//
// Main thread only. Answers that come after the object is destroyed are dropped.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/Dispatch.h"

namespace tessaly {

class VolumeCalls {
 public:
  // The volume a question is for. Another id is another volume, even at the same path.
  struct Volume {
    std::uint64_t id = 0;
    std::string path;

    friend bool operator==(const Volume&, const Volume&) = default;
    friend bool operator<(const Volume& a, const Volume& b) {
      return a.id != b.id ? a.id < b.id : a.path < b.path;
    }
  };

  // Limit of volumes asked at the same time, not counting those that hang.
  static constexpr std::size_t mostAtOnce = 4;

  // `dispatch` must outlive the object and all running questions.
  explicit VolumeCalls(Dispatch& dispatch);
  ~VolumeCalls();
  VolumeCalls(const VolumeCalls&) = delete;
  VolumeCalls& operator=(const VolumeCalls&) = delete;

  // Runs `question` on a worker queue; it must not throw. `take` gets its answer on the main
  // thread, after this call has returned, or nullopt once `patience` is over.
  template <class Answer>
  void ask(const Volume& volume, std::chrono::milliseconds patience,
           std::function<Answer()> question, std::function<void(std::optional<Answer>)> take) {
    auto answer = std::make_shared<std::optional<Answer>>();
    add(
        volume, patience, [answer, question = std::move(question)] { answer->emplace(question()); },
        [answer, take = std::move(take)](bool isAnswered) {
          take(isAnswered ? std::move(*answer) : std::nullopt);
        });
  }

 private:
  class Calls;

  void add(const Volume& volume, std::chrono::milliseconds patience, Dispatch::Work question,
           std::function<void(bool isAnswered)> end);

  std::shared_ptr<Calls> calls_;
};

}  // namespace tessaly
