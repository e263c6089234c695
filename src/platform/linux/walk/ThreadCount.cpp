#include "platform/linux/walk/ThreadCount.h"

#include <algorithm>

namespace tessaly::walk {

int threadCount(int wanted, unsigned cores) {
  constexpr unsigned fewest = 2;
  constexpr unsigned most = 4;
  return wanted > 0 ? wanted : static_cast<int>(std::clamp(cores, fewest, most));
}

}  // namespace tessaly::walk
