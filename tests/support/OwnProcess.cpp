#include "support/OwnProcess.h"

#include <chrono>
#include <filesystem>
#include <iterator>
#include <poll.h>
#include <sys/wait.h>
#include <thread>

namespace tessaly {

namespace {

std::size_t entriesOf(const char* folder) {
  namespace fs = std::filesystem;
  return static_cast<std::size_t>(
      std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

}  // namespace

OwnProcess OwnProcess::now() {
  // With the first thread of a program, the thread sanitizer starts one that stays.
  [[maybe_unused]] static const bool hasStartedOne = [] {
    std::thread([] {}).join();
    return true;
  }();
  siginfo_t child{};
  return {.descriptors = entriesOf("/proc/self/fd"),
          .threads = entriesOf("/proc/self/task"),
          .hasChildren = waitid(P_ALL, 0, &child, WEXITED | WNOHANG | WNOWAIT) == 0};
}

OwnProcess settled(const OwnProcess& expected) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point end = Clock::now() + std::chrono::minutes(1);
  OwnProcess seen = OwnProcess::now();
  while (seen != expected && Clock::now() < end) {
    poll(nullptr, 0, 1);
    seen = OwnProcess::now();
  }
  return seen;
}

}  // namespace tessaly
