// The resources of the test process at this moment, to find leaks.
#pragma once

#include <cstddef>
#include <functional>
#include <ostream>

namespace tessaly {

struct OwnProcess {
  std::size_t descriptors = 0;
  std::size_t threads = 0;
  bool hasChildren = false;  // including zombies

  static OwnProcess now();

  friend bool operator==(const OwnProcess&, const OwnProcess&) = default;
  friend std::ostream& operator<<(std::ostream& out, const OwnProcess& process) {
    return out << process.descriptors << " descriptors, " << process.threads << " threads, "
               << (process.hasChildren ? "children" : "no children");
  }
};

// Polls until the process is as `expected`, which depends on other threads and processes, and
// returns the last state. Gives up after a minute.
OwnProcess settled(const OwnProcess& expected);

}  // namespace tessaly
