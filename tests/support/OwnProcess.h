// What the process of the tests has at this moment, to find out what was left behind.
#pragma once

#include <cstddef>
#include <functional>
#include <ostream>

namespace tessaly {

struct OwnProcess {
  std::size_t descriptors = 0;
  std::size_t threads = 0;
  bool hasChildren = false;  // zombies too

  static OwnProcess now();

  friend bool operator==(const OwnProcess&, const OwnProcess&) = default;
  friend std::ostream& operator<<(std::ostream& out, const OwnProcess& process) {
    return out << process.descriptors << " descriptors, " << process.threads << " threads, "
               << (process.hasChildren ? "children" : "no children");
  }
};

// Looks until the process is as `expected`, which needs the help of other threads and processes,
// and gives what it saw last. After a minute it gives up.
OwnProcess settled(const OwnProcess& expected);

}  // namespace tessaly
