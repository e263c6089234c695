// How full a volume is. A plain value.
#pragma once

#include <cstdint>

namespace tessaly {

// Of one volume, sizes in bytes. All zero means that nothing is known.
struct DiskUsage {
  std::int64_t total = 0;
  std::int64_t used = 0;
  std::int64_t free = 0;
  double usedPercent = 0;      // 0 to 100
  std::int64_t purgeable = 0;  // what the system could give back by itself; 0 when unknown

  friend bool operator==(const DiskUsage&, const DiskUsage&) = default;
};

}  // namespace tessaly
