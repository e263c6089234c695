// Takes descriptors away from a process, as load does. For a forked child: what runs beside it has
// too few then as well.
#pragma once

#include <cstddef>
#include <fcntl.h>
#include <utility>
#include <vector>

#include "support/Descriptor.h"

namespace tessaly {

// All that the process may still open but `left`, until they are given back.
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
