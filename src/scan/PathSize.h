// Name, path and size of one item on disk, an entry of the lists of found items. Identified by its
// path. Names and paths are bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace tessaly {

struct PathSize {
  std::string name;
  std::string path;
  std::int64_t size = 0;  // bytes

  friend bool operator==(const PathSize&, const PathSize&) = default;
};

}  // namespace tessaly

template <>
struct std::hash<tessaly::PathSize> {
  std::size_t operator()(const tessaly::PathSize& item) const {
    const std::hash<std::string> textHash;
    return (textHash(item.path) * 31 + textHash(item.name)) * 31 +
           std::hash<std::int64_t>{}(item.size);
  }
};
