// A system that refuses threads, as it does where the user has too many already.
#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <thread>

#include "platform/StartThread.h"

namespace tessaly {

// Outlives those it lends startThread() to. Safe from any thread.
class RefusedThreads {
 public:
  explicit RefusedThreads(bool isRefusing = true) : isRefusing_(isRefusing) {}

  void refuse() { isRefusing_ = true; }
  void relent() { isRefusing_ = false; }
  // Grants so many more, and no others.
  void refuseAfter(int granted) {
    granted_ = granted;
    isRefusing_ = true;
  }

  StartThread startThread() {
    return [this](const std::function<void()>& body) {
      if (isRefusing_ && granted_.fetch_sub(1) <= 0) {
        ++refused_;
        return std::thread();
      }
      return tessaly::startThread(body);
    };
  }

  int refused() const { return refused_; }

 private:
  std::atomic<bool> isRefusing_;
  std::atomic<int> granted_ = 0;
  std::atomic<int> refused_ = 0;
};

// Has the system refuse threads to this process for true, and lets it grant them again. Only in a
// child, and as a user who is not root, to whom no limit applies. For what goes wrong a text.
std::string refuseThreads();
std::string grantThreads();

}  // namespace tessaly
