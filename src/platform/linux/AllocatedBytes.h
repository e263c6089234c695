// The space that an item takes on its disk.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "platform/CheckedArithmetic.h"

namespace tessaly {

// Bytes in this many blocks of st_blocks, which have 512 bytes each, whatever the block size of the
// file system. Checked, since a remote file system may report any number.
inline std::int64_t bytesOfBlocks(std::uint64_t blocks) {
  constexpr std::uint64_t most = std::numeric_limits<std::int64_t>::max();
  return checkedMul(static_cast<std::int64_t>(std::min(blocks, most)), 512);
}

}  // namespace tessaly
