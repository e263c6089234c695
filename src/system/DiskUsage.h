// Usage of a volume. A plain value.
#pragma once

#include <cstdint>
#include <string>

namespace tessaly {

// Usage of one volume, sizes in bytes. All zero and empty means unknown.
struct DiskUsage {
  std::int64_t total = 0;
  std::int64_t used = 0;
  std::int64_t free = 0;
  double usedPercent = 0;      // 0 to 100
  std::int64_t purgeable = 0;  // space the system could free by itself; 0 when unknown
  // The type as the system writes it, such as "ext4"; empty if unknown.
  std::string fileSystem = {};

  friend bool operator==(const DiskUsage&, const DiskUsage&) = default;
};

}  // namespace tessaly
