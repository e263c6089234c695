// Growth of one path from one scan to the next, identified by the path. Names and paths are bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace tessaly {

struct ScanDelta {
  std::string name;         // last component of the path
  std::string path;         // absolute
  std::int64_t before = 0;  // bytes; 0 for a path that did not exist
  std::int64_t after = 0;   // bytes

  friend bool operator==(const ScanDelta&, const ScanDelta&) = default;
};

}  // namespace tessaly

template <>
struct std::hash<tessaly::ScanDelta> {
  std::size_t operator()(const tessaly::ScanDelta& delta) const {
    const std::hash<std::string> textHash;
    const std::hash<std::int64_t> sizeHash;
    return ((textHash(delta.path) * 31 + textHash(delta.name)) * 31 + sizeHash(delta.before)) * 31 +
           sizeHash(delta.after);
  }
};
