// The room that an item takes on its disk.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "platform/CheckedArithmetic.h"

namespace tessaly {

// Bytes in this many of the blocks in which the kernel tells the room of an item. They are 512
// bytes each, whatever the blocks of the file system are. Checked: the number comes from whoever
// serves the file system.
inline std::int64_t bytesOfBlocks(std::uint64_t blocks) {
  constexpr std::uint64_t most = std::numeric_limits<std::int64_t>::max();
  return checkedMul(static_cast<std::int64_t>(std::min(blocks, most)), 512);
}

}  // namespace tessaly
