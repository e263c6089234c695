// Takes descriptors away from a process, as load does. For a forked child: all threads of the
// process are short of them then.
#pragma once

#include <cstddef>
#include <fcntl.h>
#include <utility>
#include <vector>

#include "support/Descriptor.h"

namespace tessaly {

// All descriptors that the process can still open except `left`; destroying them releases them.
inline std::vector<Descriptor> allDescriptorsBut(std::size_t left) {
  std::vector<Descriptor> held;
  while (true) {
    Descriptor one(open("/dev/null", O_RDONLY | O_CLOEXEC));
    if (!one) break;
    held.push_back(std::move(one));
  }
  for (; left > 0 && !held.empty(); --left) held.pop_back();
  return held;
}

}  // namespace tessaly
