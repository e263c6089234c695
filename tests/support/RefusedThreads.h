// A system that refuses threads, as it does when the user has too many.
#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <thread>

#include "platform/StartThread.h"

namespace tessaly {

// Must outlive the users of its startThread(). Safe from any thread.
class RefusedThreads {
 public:
  explicit RefusedThreads(bool isRefusing = true) : isRefusing_(isRefusing) {}

  void refuse() { isRefusing_ = true; }
  void relent() { isRefusing_ = false; }
  // Grants this many more threads.
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

// Make the system really refuse threads to this process, and grant them again. Only in a child, and
// as a user other than root, for whom there is no limit. Return "" or what went wrong.
std::string refuseThreads();
std::string grantThreads();

}  // namespace tessaly
