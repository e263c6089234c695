// The sizes of a folder's direct children at one moment. Paths are bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "scan/PathSizes.h"

namespace tessaly {

struct FolderSnapshot {
  std::string path;  // absolute path of the folder, with all links resolved
  PathSizes sizes;   // bytes on disk, by the paths of the children

  friend bool operator==(const FolderSnapshot&, const FolderSnapshot&) = default;
};

}  // namespace tessaly

template <>
struct std::hash<tessaly::FolderSnapshot> {
  std::size_t operator()(const tessaly::FolderSnapshot& snapshot) const {
    const std::hash<std::string> textHash;
    const std::hash<std::int64_t> sizeHash;
    // Equal maps may iterate in different orders; a sum does not depend on the order.
    std::size_t sum = 0;
    for (const auto& [path, size] : snapshot.sizes) {
      const std::size_t entry = textHash(path) * 31 + sizeHash(size);
      sum += entry * entry;
    }
    return textHash(snapshot.path) * 31 + sum;
  }
};
